// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The simulated handset's side of the panel's pages: where each sheet of the
// catalogue stands in the panel, the values of a read written into its cells,
// and the values the user may have edited read back from them.
#include "model/SimulatedHandset.h"

#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"

#include <tessaly/Tessaly.h>

#include <algorithm>

namespace tessaly::model {

// The items as last read or written, with every value that the user may edit
// taken from the panel, or the refusal of the first value that does not fit.
// Bytes no value of the panel covers stay as the handset was last known to
// hold them.
NvImage SimulatedHandset::valuesOfPanel() const
{
    const NvImage read = known(QStringLiteral("NV Write"));
    NvImage values;
    const auto put = [&](const Field& field, int copy, const QString& text, const QString& where) {
        const NvAddress address = field.address(copy);
        if (m_lacking.count(address))
            return; // empty and read-only on the page
        NvData& data = values.try_emplace(address, read.at(address)).first->second;
        if (const QString problem = Encode(field, text, data); !problem.isEmpty())
            throw TessalyError(errValueRefused,
                               QStringLiteral("the value \"%2\" of %1 %3. Nothing was written to the handset; "
                                              "correct it and write again")
                                   .arg(where, text, problem));
    };
    for (const Sheet& sheet : m_catalogue.sheets()) {
        const int16_t part = sheet.part;
        const std::vector<Row>& rows = sheet.page->rows;
        for (size_t r = 0; r < rows.size(); ++r) {
            if (rows[r].readOnly[size_t(sheet.copy)])
                continue;
            const std::vector<Field>& columns = rows[r].columns;
            for (size_t c = 0; c < columns.size(); ++c) {
                const QString where = columns.size() == 1
                    ? QStringLiteral("\"%1\" on the page %2").arg(rows[r].title, sheet.name)
                    : QStringLiteral("\"%1\", column %2, on the page %3").arg(rows[r].title).arg(c + 1).arg(sheet.name);
                put(columns[c], sheet.copy, m_panel->GetItemFromGrd(part, int32_t(r + 1), sheet.readColumn(c)),
                    where);
            }
        }
    }
    put(m_catalogue.profileCount(), 0, QString::number(m_panel->GetProfileCount()),
        QStringLiteral("the number of MIP profiles"));
    put(m_catalogue.activeProfile(), 0, QString::number(m_panel->GetActiveProfileIndex()),
        QStringLiteral("the active MIP profile"));
    return values;
}

void SimulatedHandset::fillSheet(const Sheet& sheet, const NvImage& items)
{
    const NvImage& read = items;
    const std::vector<Row>& rows = sheet.page->rows;
    const int16_t part = sheet.part;
    if (sheet.titles) {
        m_panel->SetNVFieldItemCount(part, int16_t(rows.size()));
        for (size_t r = 0; r < rows.size(); ++r)
            m_panel->AddItemToGrid2(part, QString(), false, QString(), rows[r].title, int32_t(r + 1), 0);
    }
    for (size_t r = 0; r < rows.size(); ++r) {
        const std::vector<Field>& columns = rows[r].columns;
        for (size_t c = 0; c < columns.size(); ++c) {
            const Field& field = columns[c];
            const NvAddress address = field.address(sheet.copy);
            const bool lacking = m_lacking.count(address) > 0;
            m_panel->AddItemToGrd(part, QString(MaxLength(field), u'#'), TakesDigitsOnly(field),
                                  lacking || rows[r].readOnly[size_t(sheet.copy)], field.choices.join(u'|'),
                                  lacking ? QString() : Decode(field, read.at(address)), int32_t(r + 1),
                                  sheet.fillColumn(c));
        }
    }
}

} // namespace tessaly::model
