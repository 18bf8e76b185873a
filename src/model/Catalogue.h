// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The catalogue of the handset's values: for every value of the panel, the
// field of the NV item that holds it, the cell where the panel shows it and
// how the user may edit it, and its factory value. It is a JSON file; the
// one built in comes with the library as a resource.
#pragma once

#include "model/FieldCoding.h"
#include "model/NvMemory.h"
#include "pages/PageTable.h"

#include <QString>

#include <array>
#include <cstdint>
#include <set>
#include <vector>

namespace tessaly::model {

// One item row of a page: its title and one field per value column.
struct Row {
    QString title;
    std::vector<Field> columns;
    std::vector<bool> readOnly; // by copy: NAM or profile
};

// The rows of a page as the catalogue lists them once: for both NAMs, for
// all six profiles, or for one page.
struct Page {
    int16_t page = 0;
    std::vector<Row> rows;
};

// One page as the handset fills it: a NAM, a profile, or one page, with the
// panel's numbering of its cells.
struct Sheet {
    QString name; // as the panel's tree names it
    int16_t part = 0;
    int copy = 0; // the NAM or the profile, the index of its indexed items
    bool titles = true; // sets the rows and titles: the first profile does it for all six
    const Page* page = nullptr;

    // The column of a value for AddItemToGrd and for GetItemFromGrd.
    int32_t fillColumn(size_t column) const { return part == ProfilesPart ? copy + 1 : int32_t(column) + 1; }
    int32_t readColumn(size_t column) const { return part == ProfilesPart ? copy : int32_t(column); }
};

// The captions of the basic information values, in the order of
// Catalogue::basicInformation().
inline constexpr std::array<const char*, 6> BasicInformationTitles
    = {"Phone Version", "Warranty Date", "ESN", "MEID", "Life Time", "Life Count"};

// The title the catalogue gives an item's first value, and its field.
struct NamedField {
    QString title;
    Field field;
};

class Catalogue {
public:
    // Reads a catalogue; throws std::runtime_error naming the fault.
    static Catalogue Load(const QString& path);
    // The catalogue that comes with the library.
    static const Catalogue& BuiltIn();

    Catalogue(Catalogue&&) = default;
    Catalogue& operator=(Catalogue&&) = default;

    const std::vector<Sheet>& sheets() const { return m_sheets; }
    // PhoneVersion, WarrantyDate, ESN, MEID, LifeTime, LifeCnt: the order of
    // SetBasicInfo.
    const std::array<Field, 6>& basicInformation() const { return m_basic; }
    const Field& profileCount() const { return m_profileCount; }
    const Field& activeProfile() const { return m_activeProfile; }
    // Every item that holds a value, once, in the order of a read.
    const std::vector<NvAddress>& addresses() const { return m_addresses; }
    // The items kept once per NAM or per profile, by their number.
    std::set<uint16_t> indexedItems() const;
    // The items of a new handset.
    const NvImage& factory() const { return m_factory; }
    // Why an item is never written: "identity" (ESN, MEID), "counter" (life
    // timer, life count), "read-only"; an empty string for an item that may be.
    QString protection(uint16_t item) const;
    // Where the panel shows the first value of an item, as "\"NAM Name\" on
    // the page System NAM2"; an empty string for an item it does not show.
    QString placeOf(NvAddress address) const;
    // The title and field of an item's first value, as the panel shows it;
    // nullptr for an item the catalogue does not know.
    const NamedField* named(NvAddress address) const;

private:
    Catalogue() = default;
    friend class CatalogueReader;

    std::vector<Page> m_pages; // the sheets point into it; a move keeps them
    std::vector<Sheet> m_sheets;
    std::array<Field, 6> m_basic;
    Field m_profileCount;
    Field m_activeProfile;
    std::vector<NvAddress> m_addresses;
    NvImage m_factory;
    std::map<uint16_t, QString> m_protected;
    std::map<NvAddress, QString> m_places;
    std::map<NvAddress, NamedField> m_named;
};

} // namespace tessaly::model
