// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The two pages of the panel that show a handset's preferred roaming list:
// "Roaming List", its system table (one row per system: SID, NID, preferred
// or negative, geographic region, priority, acquisition index, roaming
// indicator), and "Acquisition Table", its acquisition records (one row per
// record: its type, then the cellular system, the standard channels, the PCS
// blocks or the channels its type has). The host adds both pages (AddTab
// with SystemColumns and AcquisitionColumns columns); this fills them through
// the panel's public methods, and reads back a list with the edited cells.
//
// A page's cells are kept by the panel's cell store, whose bound is about
// 4,200 cells a page: the pages show the first MaxRows systems and records
// of a list, which covers the lists carriers ship (a few hundred systems),
// and keep the others as they are. A list that is not valid is shown
// read-only, as far as it can be read.
#pragma once

#include "model/Prl.h"

#include <QPointer>
#include <QStringList>

#include <optional>
#include <vector>

class Tessaly;

namespace tessaly::model {

class RoamingListPages {
public:
    // The columns of the pages, 0 for the row titles (the record's index).
    enum SystemColumn : int {
        SidColumn = 1,
        NidColumn,
        KindColumn,
        RegionColumn,
        PriorityColumn,
        AcquisitionColumn,
        RoamingColumn,
        SystemColumns
    };
    enum AcquisitionColumn : int {
        TypeColumn = 1,
        CellularColumn,
        PrimarySecondaryColumn,
        BlocksColumn,
        ChannelsColumn,
        AcquisitionColumns
    };
    // The most rows a page shows: 8 columns of 500 rows stay in the bound.
    static constexpr int MaxRows = 500;

    // Dresses the pages `systems` and `acquisitions` of `panel`: column
    // titles and widths. They are empty until shown.
    RoamingListPages(Tessaly& panel, int16_t systems, int16_t acquisitions);

    int16_t systemsPage() const { return m_systemsPage; }
    int16_t acquisitionsPage() const { return m_acquisitionsPage; }

    // Shows the list `bytes` on both pages.
    void show(const QByteArray& bytes);
    // The list laid out again with the cells the user edited, its size and
    // CRC worked out; none when no cell changed. Throws TessalyError
    // (errValueRefused) naming the first cell that holds no such value, an
    // acquisition index without its record, or a shown list that is not
    // valid.
    std::optional<QByteArray> edited() const;

private:
    void dress(int16_t page, const QStringList& titles, const std::vector<int>& widths);
    void showSystems();
    void showAcquisitions();
    // The cells' texts as the user left them, row after row.
    std::vector<QStringList> cells(int16_t page, int rows, int columns) const;
    void readSystems(Prl& list, const std::vector<QStringList>& cells) const;
    void readAcquisitions(Prl& list, const std::vector<QStringList>& cells) const;

    QPointer<Tessaly> m_panel;
    int16_t m_systemsPage;
    int16_t m_acquisitionsPage;
    std::optional<Prl> m_list; // as shown
    QString m_problem;         // why the list shown is not valid
    std::vector<QStringList> m_systemTexts;      // as shown, row after row
    std::vector<QStringList> m_acquisitionTexts; // as shown
};

} // namespace tessaly::model
