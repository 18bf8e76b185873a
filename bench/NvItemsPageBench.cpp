// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Listing every NV item number, 65,536 rows, on the NV Items page: the texts
// of each row made and the page's grid filled a column a call, beside a
// QTableView over a table model given the same texts, made the same way.
#include "model/ItemsPage.h"

#include <tessaly/Tessaly.h>

#include <QAbstractTableModel>
#include <QTableView>

#include <benchmark/benchmark.h>

namespace {

using tessaly::model::ItemsPage;
using tessaly::model::NvEntry;
using tessaly::model::NvStatus;

// Every item number, holding 1 to 32 bytes, one in seven lacking.
std::vector<NvEntry> EveryItem()
{
    std::vector<NvEntry> entries(65536);
    for (size_t i = 0; i < entries.size(); ++i) {
        NvEntry& entry = entries[i];
        entry.address = {uint16_t(i), -1};
        entry.status = i % 7 ? NvStatus::Done : NvStatus::NotValid;
        for (size_t b = 0; b <= i % 32; ++b)
            entry.data[b] = uint8_t(i + b + 1);
    }
    return entries;
}

void NvItemsPageFill(benchmark::State& state)
{
    const std::vector<NvEntry> entries = EveryItem();
    Tessaly panel;
    panel.resize(720, 562);
    ItemsPage page(panel, panel.AddTab(QStringLiteral("NV Items"), ItemsPage::Columns));
    for (auto _ : state)
        page.fill(entries);
    state.SetItemsProcessed(state.iterations() * int64_t(entries.size()));
}
BENCHMARK(NvItemsPageFill)->Unit(benchmark::kMillisecond);

class ItemsModel : public QAbstractTableModel {
public:
    void setTexts(ItemsPage::RowTexts texts)
    {
        beginResetModel();
        m_texts = std::move(texts);
        endResetModel();
    }
    int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : int(m_texts[0].size());
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : ItemsPage::Columns; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return m_texts[size_t(index.column())][index.row()];
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        return index.column() == ItemsPage::HexColumn ? flags | Qt::ItemIsEditable : flags;
    }

private:
    ItemsPage::RowTexts m_texts;
};

void QTableViewFill(benchmark::State& state)
{
    const std::vector<NvEntry> entries = EveryItem();
    ItemsModel model;
    QTableView view;
    view.resize(720, 562);
    view.setModel(&model);
    for (auto _ : state)
        model.setTexts(ItemsPage::Texts(entries));
    state.SetItemsProcessed(state.iterations() * int64_t(entries.size()));
}
BENCHMARK(QTableViewFill)->Unit(benchmark::kMillisecond);

} // namespace
