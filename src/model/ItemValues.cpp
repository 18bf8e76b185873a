// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/ItemValues.h"

#include <set>

namespace tessaly::model {

std::vector<ItemValue> ItemValues(const Catalogue& catalogue, NvAddress address, const NvData& data)
{
    const auto holds = [&](const Field& field) {
        return field.item == address.item && field.indexed == (address.index >= 0);
    };
    std::vector<ItemValue> values;
    const auto single = [&](const Field& field, const char* title) {
        if (holds(field))
            values.push_back({QLatin1String(title), {Decode(field, data)}});
    };
    for (size_t i = 0; i < catalogue.basicInformation().size(); ++i)
        single(catalogue.basicInformation()[i], BasicInformationTitles[i]);
    single(catalogue.profileCount(), "Number of MIP Profiles");
    single(catalogue.activeProfile(), "Active MIP Profile");
    // Both NAMs share their page's rows, and the six profiles theirs: each
    // page is read once.
    std::set<const Page*> read;
    for (const Sheet& sheet : catalogue.sheets()) {
        if (!read.insert(sheet.page).second)
            continue;
        for (const Row& row : sheet.page->rows) {
            ItemValue value{row.title, {}};
            for (const Field& field : row.columns)
                if (holds(field))
                    value.values << Decode(field, data);
            if (!value.values.isEmpty())
                values.push_back(std::move(value));
        }
    }
    return values;
}

QString ColumnName(const ItemValue& value, qsizetype column)
{
    return value.values.size() == 1 ? value.title : QStringLiteral("%1 (column %2)").arg(value.title).arg(column + 1);
}

} // namespace tessaly::model
