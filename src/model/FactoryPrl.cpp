// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/FactoryPrl.h"

namespace tessaly::model {


namespace {

// One system of the table: a new region starts with `newRegion`; a NID of
// -1 is none (any), -2 the public system.
struct FactorySystem {
    uint16_t sid;
    int nid;
    bool newRegion;
    bool preferred;
    bool morePreferred;
    uint16_t acquisition;
    uint8_t roaming; // 0 roaming, 1 home, 2 flashing
};

// The acquisition table's indexes.
enum : uint16_t { PcsAll, CellularA, CellularB, PcsHome, CellularCustom, CellularPreferred, Analog, PcsAny };

constexpr FactorySystem Systems[] = {
    // The home area: the carrier's own PCS and cellular systems.
    {4139, 1, true, true, true, PcsHome, 1},
    {4139, -1, false, true, true, PcsAll, 1},
    {4140, -1, false, true, false, CellularA, 1},
    {4141, 12, false, true, true, CellularA, 1},
    {22, -1, false, false, false, CellularB, 0},
    // A neighbouring market with two partners.
    {4146, -1, true, true, true, PcsAll, 1},
    {4147, -1, false, true, true, CellularB, 1},
    {2, -1, false, true, true, CellularA, 0},
    {4, -2, false, true, false, CellularB, 2},
    {56, -1, false, false, false, Analog, 0},
    // Roaming partners, region by region.
    {1, -1, true, true, false, CellularA, 0},
    {3, -1, false, true, false, CellularB, 0},
    {4152, -1, false, true, true, PcsAll, 1},
    {16, -1, true, true, true, CellularCustom, 0},
    {17, -1, false, true, false, CellularCustom, 0},
    {4160, 3, false, true, true, PcsHome, 1},
    {4161, -1, false, true, false, PcsAll, 1},
    {18, -1, true, true, false, CellularPreferred, 2},
    {20, -1, false, true, false, CellularPreferred, 2},
    {24, -1, false, true, false, CellularA, 0},
    {26, -1, false, false, false, CellularB, 0},
    {4170, -1, true, true, true, PcsAll, 1},
    {4171, 40, false, true, false, PcsAll, 1},
    {4172, 41, false, true, false, PcsAll, 1},
    {28, -1, false, true, false, CellularA, 0},
    {30, -1, false, true, false, CellularB, 0},
    {100, -1, true, true, true, CellularA, 0},
    {101, -1, false, true, false, CellularB, 0},
    {4180, -1, false, true, true, PcsAll, 1},
    {102, -1, false, true, false, Analog, 2},
    {7, -1, true, true, false, CellularPreferred, 0},
    {9, -1, false, true, false, CellularPreferred, 0},
    {4190, -1, false, true, false, PcsAny, 1},
    {110, -1, false, false, false, CellularB, 0},
    {0, -1, true, true, false, PcsAny, 0}, // any other system, as a last resort
};

PrlAcquisition Acquisition(uint8_t type, uint8_t system = 0, uint8_t primarySecondary = 0)
{
    PrlAcquisition record;
    record.type = type;
    record.system = system;
    record.primarySecondary = primarySecondary;
    return record;
}

} // namespace

Prl FactoryPrl()
{
    Prl list;
    list.layout = PrlLayout::Standard;
    list.listId = 10012;
    list.preferredOnly = false;
    list.defaultRoaming = 0;

    PrlAcquisition pcsAll = Acquisition(AcqPcsCdmaBlocks);
    pcsAll.blocks = {0, 1, 2, 3, 4, 5};
    PrlAcquisition pcsHome = Acquisition(AcqPcsCdmaChannels);
    for (const uint16_t channel : {25, 50, 75, 100, 125, 150, 175, 200})
        pcsHome.channels.push_back({0, channel});
    PrlAcquisition custom = Acquisition(AcqCellularCdmaCustom);
    for (const uint16_t channel : {283, 384, 691, 777})
        custom.channels.push_back({0, channel});
    PrlAcquisition pcsAny = Acquisition(AcqPcsCdmaBlocks);
    pcsAny.blocks = {7};
    list.acquisitions = {pcsAll,
                         Acquisition(AcqCellularCdmaStandard, 0, 3),
                         Acquisition(AcqCellularCdmaStandard, 1, 3),
                         pcsHome,
                         custom,
                         Acquisition(AcqCellularCdmaPreferred, 3),
                         Acquisition(AcqCellularAnalog, 3),
                         pcsAny};

    for (const FactorySystem& entry : Systems) {
        PrlSystem system;
        system.sid = entry.sid;
        system.nidIncluded = entry.nid >= 0 ? NidIncluded : entry.nid == -2 ? NidPublic : NidWildcard;
        system.nid = entry.nid >= 0 ? uint16_t(entry.nid) : entry.nid == -2 ? 0 : 65535;
        system.preferred = entry.preferred;
        system.sameRegion = !entry.newRegion;
        system.morePreferred = entry.preferred && entry.morePreferred;
        system.acquisitionIndex = entry.acquisition;
        if (entry.preferred)
            system.roamingIndicator = entry.roaming;
        list.systems.push_back(system);
    }
    return list;
}

} // namespace tessaly::model
