// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The preferred roaming list (PRL): the tables a CDMA handset chooses its
// system by, in the binary form carriers ship as .prl files and handsets
// keep. Two layouts, both from 3GPP2 C.S0016 section 3.5.5:
//
// - the preferred roaming list of IS-683-A (SSPR_P_REV 1): a header, an
//   acquisition table and a system table, every field bit-packed after the
//   one before it; records carry no length, so a record of a type the
//   standard does not define leaves the rest of the list unreadable;
// - the extended preferred roaming list of IS-683-C (SSPR_P_REV 3): the
//   header adds CUR_SSPR_P_REV and a common subnet table; acquisition
//   records carry their type and length in octets, system records their
//   length and type, so a record of an unknown type is kept and passed over.
//
// Both end in PR_LIST_CRC. A Prl is a value to show and edit: EncodePrl lays
// it out again with its size and CRC worked out, and for a valid list
// EncodePrl(DecodePrl(bytes).list) gives back the same bytes.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace tessaly::model {

enum class PrlLayout {
    Standard, // IS-683-A
    Extended, // IS-683-C
};

// The acquisition record types of C.S0016 section 3.5.5.2.1 (ACQ_TYPE).
enum PrlAcquisitionType : uint8_t {
    AcqCellularAnalog = 1,
    AcqCellularCdmaStandard = 2,
    AcqCellularCdmaCustom = 3,
    AcqCellularCdmaPreferred = 4,
    AcqPcsCdmaBlocks = 5,
    AcqPcsCdmaChannels = 6,
    AcqJtacsCdmaStandard = 7,
    AcqJtacsCdmaCustom = 8,
    Acq2GHzBandChannels = 9,
    AcqGeneric1x = 10,   // cdma2000 1x and IS-95, any band: extended list only
    AcqGenericHrpd = 11, // HRPD, any band: extended list only
};

// One channel of an acquisition record; the band class only in the generic
// records, which name one with each channel.
struct PrlChannel {
    uint8_t band = 0;
    uint16_t channel = 0;
    bool operator==(const PrlChannel&) const = default;
};

// One record of the acquisition table: which frequencies to search. Only the
// fields of its type are laid out.
struct PrlAcquisition {
    uint8_t type = 0;
    uint8_t system = 0;           // A_B: 0 system A, 1 system B, 3 either (analog, standard, preferred, JTACS)
    uint8_t primarySecondary = 0; // PRI_SEC: 1 primary, 2 secondary, 3 both (CDMA standard channels)
    std::vector<uint8_t> blocks;  // PCS blocks: 0 A to 5 F, 7 any
    std::vector<PrlChannel> channels;
    QByteArray unknown; // an unknown type's octets, as the extended list carries them
    bool operator==(const PrlAcquisition&) const = default;
};

// NID_INCL: whether a system record carries its NID, or which one it means.
enum PrlNidIncluded : uint8_t { NidWildcard = 0, NidIncluded = 1, NidPublic = 2 };

// The extended system record types (SYS_RECORD_TYPE).
enum PrlSystemType : uint8_t { SysCdma = 0, SysHrpd = 1 };

// One record of the system table: a system, preferred or negative, in its
// geographic region, with the acquisition record it is found by.
struct PrlSystem {
    uint8_t type = SysCdma; // extended list only
    uint16_t sid = 0;
    uint8_t nidIncluded = NidWildcard;
    uint16_t nid = 65535; // as NID_INCL says: 65535 for the wildcard, 0 for the public system
    bool preferred = true;   // PREF_NEG: a negative system is never used
    bool sameRegion = false; // GEO: false starts a new geographic region
    bool morePreferred = false; // PRI: more preferred than the next record of its region
    uint16_t acquisitionIndex = 0;
    std::optional<uint8_t> roamingIndicator; // in the IS-683-A list, a preferred system's alone
    // The extended list's association of a 1x system with HRPD systems.
    std::optional<uint8_t> associationTag;
    bool pnAssociation = false;
    bool dataAssociation = false;
    // An HRPD record's subnet: SUBNET_LSB_LENGTH bits of SUBNET_LSB, and the
    // common subnet record it continues, if any.
    int subnetBits = 0;
    QByteArray subnet;
    std::optional<uint16_t> subnetCommonOffset;
    QByteArray unknown; // an unknown type's whole record
    bool operator==(const PrlSystem&) const = default;
};

struct Prl {
    PrlLayout layout = PrlLayout::Standard;
    uint16_t listId = 0;       // PR_LIST_ID
    uint8_t ssprRevision = 3;  // CUR_SSPR_P_REV, extended list only
    bool preferredOnly = false; // PREF_ONLY
    uint8_t defaultRoaming = 0; // DEF_ROAM_IND
    std::vector<PrlAcquisition> acquisitions;
    std::vector<QByteArray> commonSubnets; // extended list only
    std::vector<PrlSystem> systems;
    bool operator==(const Prl&) const = default;
};

// What a decode found in a file's bytes.
struct PrlDecoding {
    std::optional<Prl> list; // none when not even the header could be read
    uint16_t sizeField = 0;  // PR_LIST_SIZE
    uint16_t crcField = 0;   // PR_LIST_CRC as the list carries it
    uint16_t crc = 0;        // as worked out over the list
    // Why the list cannot be taken as it is: too short, its size field not
    // its length, a wrong CRC, tables that run past their end or a record
    // that cannot be read. Empty for a valid list.
    QString problem;
    // Whether the tables were read to their end; false after an unknown
    // acquisition type of the IS-683-A list.
    bool complete = false;
};

// The CRC of PR_LIST_CRC over `bytes` (C.S0016 3.5.5, "PR_LIST_CRC").
uint16_t PrlCrc(QByteArrayView bytes);
PrlDecoding DecodePrl(QByteArrayView bytes);
// The list laid out with its size and CRC.
QByteArray EncodePrl(const Prl& list);
// Empty when `bytes` are a valid list; else why not.
QString PrlProblem(QByteArrayView bytes);

// The names a technician knows them by.
QString PrlAcquisitionTypeName(uint8_t type);
QString PrlLayoutName(PrlLayout layout);

} // namespace tessaly::model
