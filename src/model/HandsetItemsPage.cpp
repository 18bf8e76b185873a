// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The simulated handset's side of the NV Items page: every item listed after
// a read, the rows edited checked and what the handset holds read before they
// are written, and the rows brought up to date after a write.
#include "model/SimulatedHandset.h"

#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"
#include "model/ItemsPage.h"

#include <tessaly/Tessaly.h>

namespace tessaly::model {

// Lists every item as sub-process `number`: those the source gives, with the
// items of the read over them, as they are newer.
void SimulatedHandset::listItems(int32_t number)
{
    const QString name = QStringLiteral("Listing every NV item");
    emit SetSubProcessStep(number, 1, Port);
    std::vector<NvEntry> entries;
    if (m_itemsSource) {
        bool announced = false;
        size_t stepped = 0;
        entries = m_itemsSource(*m_lastRead, [&](size_t done, size_t total) {
            if (!m_panel)
                throw TessalyError(errPanelGone, QStringLiteral("the panel was closed"));
            if (!announced) {
                emit GetSubTotalProgressCount(name, int32_t(total), Port);
                announced = true;
            }
            for (; stepped < done; ++stepped)
                emit StepIt(Port);
        });
    }
    std::map<NvAddress, NvEntry> listed;
    for (NvEntry& entry : entries)
        listed.insert_or_assign(entry.address, std::move(entry));
    for (const auto& [address, data] : *m_lastRead) {
        const auto lacking = m_lacking.find(address);
        listed.insert_or_assign(address, NvEntry{address, lacking == m_lacking.end() ? NvStatus::Done : lacking->second, data});
    }
    entries.clear();
    entries.reserve(listed.size());
    for (auto& [address, entry] : listed)
        entries.push_back(std::move(entry));
    m_itemsPage->fill(std::move(entries));
    emit SetSubProcessStep(number, 2, Port);
}

// The items edited on the NV Items page, each checked before anything is
// written: bytes an item can hold, an item the catalogue does not protect,
// and one the handset takes (it holds it, or holds it as inactive, without a
// value). What the handset holds of them is read first and kept by the
// memory as the end of a read; the write then sends only what differs.
NvImage SimulatedHandset::itemsEdited()
{
    if (!m_itemsPage)
        return {};
    NvImage edits = m_itemsPage->edited();
    for (const auto& [address, data] : edits) {
        if (const QString why = m_catalogue.protection(address.item); !why.isEmpty())
            throw TessalyError(errValueRefused,
                               QStringLiteral("%1, edited on the page NV Items, is never written: the catalogue "
                                              "marks it as %2. Nothing was written to the handset")
                                   .arg(Describe(address), why));
    }
    for (const auto& [address, data] : edits) {
        m_current = address;
        transfer();
        NvData held{};
        const NvStatus status = m_memory.read(address, held);
        if (status != NvStatus::Done && status != NvStatus::Inactive)
            throw TessalyError(errItemUnwritable,
                               QStringLiteral("the handset will not take it: %1. Nothing was written to the handset")
                                   .arg(NvStatusText(uint16_t(status))));
        if (status == NvStatus::Done)
            m_onHandset[address] = held;
        else
            m_onHandset.erase(address); // without a value: written whatever the bytes
    }
    m_current.reset();
    m_memory.readDone();
    return edits;
}

// After a write: the rows of the items written show their new bytes, and
// where an item edited by its bytes holds values of the other pages, those
// pages show them too.
void SimulatedHandset::showWritten(const NvImage& items)
{
    if (!m_itemsPage)
        return;
    std::vector<NvEntry> written;
    for (const auto& [address, data] : items)
        written.push_back({address, NvStatus::Done, data});
    m_itemsPage->merge(written);
}

} // namespace tessaly::model
