// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/ItemsPage.h"

#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"
#include "model/ItemRowText.h"

#include <tessaly/TessalyError.h>

#include <algorithm>

namespace tessaly::model {

namespace {

// The columns' titles and widths in twips: together as wide as the panel's
// page, the hex column widest after the name (its whole text shows as the
// cell's tooltip).
struct ColumnLook {
    const char* title;
    int width;
};
constexpr ColumnLook Looks[ItemsPage::Columns] = {
    {"Item", 720}, {"Name", 1850}, {"Status", 900}, {"Hex", 1750}, {"Value", 1250},
};

void Call(QObject* grid, const char* method, QGenericArgument a, QGenericArgument b = {}, QGenericArgument c = {})
{
    if (!grid || !QMetaObject::invokeMethod(grid, method, Qt::DirectConnection, a, b, c))
        throw TessalyError(errPanelGone, QStringLiteral("the NV Items page's grid is gone"));
}

bool ByAddress(const NvEntry& a, const NvEntry& b)
{
    return a.address < b.address;
}

// Whether the handset gave the item's value with the status.
bool Held(NvStatus status)
{
    return status == NvStatus::Done || status == NvStatus::ReadOnly;
}

} // namespace

ItemsPage::ItemsPage(QWidget& panel, int16_t page)
    : m_grid(panel.findChild<QObject*>(QStringLiteral("MSFlexGrid1(%1)").arg(page)))
    , m_page(page)
{
    for (int col = 0; col < Columns; ++col) {
        Call(m_grid, "setTextMatrix", Q_ARG(int, 0), Q_ARG(int, col), Q_ARG(QString, QLatin1String(Looks[col].title)));
        Call(m_grid, "setColWidth", Q_ARG(int, col), Q_ARG(int, Looks[col].width));
    }
    Call(m_grid, "setColEditLength", Q_ARG(int, HexColumn), Q_ARG(int, ItemHexLength));
    fill({});
}

ItemsPage::RowTexts ItemsPage::Texts(const std::vector<NvEntry>& entries)
{
    const Catalogue& catalogue = Catalogue::BuiltIn();
    // The status texts are few: made once each and shared by every row.
    std::array<QString, LastNvStatus + 1> statuses;
    for (uint16_t status = 0; status <= LastNvStatus; ++status)
        statuses[status] = NvStatusText(status);
    RowTexts texts;
    for (QStringList& column : texts)
        column.reserve(qsizetype(entries.size()));
    for (const NvEntry& entry : entries) {
        const auto status = uint16_t(entry.status);
        const NamedField* named = catalogue.named(entry.address);
        texts[NumberColumn].append(ItemNumberText(entry.address));
        texts[NameColumn].append(named ? named->title : QString());
        texts[StatusColumn].append(status <= LastNvStatus ? statuses[status] : NvStatusText(status));
        texts[HexColumn].append(ItemHexText(entry.data));
        texts[ValueColumn].append(named && Held(entry.status) ? Decode(named->field, entry.data) : QString());
    }
    return texts;
}

void ItemsPage::fill(std::vector<NvEntry> entries)
{
    std::sort(entries.begin(), entries.end(), ByAddress);
    RowTexts texts = Texts(entries);
    // Never fewer than two item rows: the grid keeps the dress the panel gave
    // them, the pattern that the rows after them repeat.
    if (!m_grid || !m_grid->setProperty("Rows", std::max<int>(3, int(entries.size()) + 1)))
        throw TessalyError(errPanelGone, QStringLiteral("the NV Items page's grid is gone"));
    for (int col = 0; col < Columns; ++col)
        Call(m_grid, "setColumnTexts", Q_ARG(int, col), Q_ARG(QStringList, texts[size_t(col)]));
    // Rows beyond the hundred the panel dressed take the alternate shading on.
    if (entries.size() > 2)
        Call(m_grid, "RepeatRowStyles", Q_ARG(int, 3), Q_ARG(int, 2));
    m_entries = std::move(entries);
    m_hex = std::move(texts[HexColumn]);
}

void ItemsPage::merge(const std::vector<NvEntry>& fresh)
{
    std::vector<NvEntry> entries = m_entries;
    for (const NvEntry& entry : fresh) {
        const auto place = std::lower_bound(entries.begin(), entries.end(), entry, ByAddress);
        if (place != entries.end() && place->address == entry.address)
            *place = entry;
        else
            entries.insert(place, entry);
    }
    fill(std::move(entries));
}

NvImage ItemsPage::edited() const
{
    QStringList cells;
    if (!m_grid
        || !QMetaObject::invokeMethod(m_grid, "ColumnTexts", Qt::DirectConnection, Q_RETURN_ARG(QStringList, cells),
                                      Q_ARG(int, HexColumn)))
        throw TessalyError(errPanelGone, QStringLiteral("the NV Items page's grid is gone"));
    NvImage edits;
    for (size_t row = 0; row < m_entries.size() && qsizetype(row) < cells.size(); ++row) {
        const QString& cell = cells[qsizetype(row)];
        if (cell == m_hex[qsizetype(row)])
            continue;
        const NvAddress address = m_entries[row].address;
        NvData data{};
        if (const QString problem = ReadItemHex(cell.trimmed(), address, data); !problem.isEmpty())
            throw TessalyError(errValueRefused,
                               QStringLiteral("the bytes \"%1\" of %2 on the page NV Items (row %3) %4. Nothing was "
                                              "written to the handset; correct them and write again")
                                   .arg(cell, Describe(address))
                                   .arg(row + 1)
                                   .arg(problem));
        if (data != m_entries[row].data || !Held(m_entries[row].status))
            edits.emplace(address, data);
    }
    return edits;
}

} // namespace tessaly::model
