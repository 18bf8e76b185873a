// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/Catalogue.h"

#include "pages/PageTable.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace tessaly::model {

namespace {

// The columns of values a row of page `number` may fill: the page's own
// value columns, or a profile page's for the six profiles.
int ValueColumns(int16_t number)
{
    return FindPage(number == ProfilesPart ? FirstProfilePage : number)->cols - 1;
}

// The sheets that one page of the catalogue fills, named as the tree names
// them: both NAMs for page 0, the six profiles for page 3, one column each.
std::vector<Sheet> SheetsOf(const Page& page)
{
    const auto node = [](int16_t number) { return QLatin1String(FindPage(number)->node); };
    if (page.page == 0)
        return {{node(0), 0, 0, true, &page}, {node(SecondNamPage), SecondNamPage, 1, true, &page}};
    if (page.page == ProfilesPart) {
        std::vector<Sheet> profiles;
        for (int profile = 0; profile <= LastProfilePage - FirstProfilePage; ++profile)
            profiles.push_back({node(int16_t(FirstProfilePage + profile)), ProfilesPart, profile, profile == 0, &page});
        return profiles;
    }
    return {{node(page.page), page.page, 0, true, &page}};
}

} // namespace

// Reads the JSON of a catalogue into one, and fails with the place of the
// first fault.
class CatalogueReader {
public:
    explicit CatalogueReader(QString path)
        : m_path(std::move(path))
    {
    }

    Catalogue read()
    {
        QFile file(m_path);
        if (!file.open(QIODevice::ReadOnly))
            fail(file.errorString());
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
        if (document.isNull())
            fail(QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset));
        const QJsonObject root = document.object();

        Catalogue catalogue;
        const QJsonObject basic = root[QLatin1String("basicInformation")].toObject();
        const char* basicNames[] = {"phoneVersion", "warrantyDate", "esn", "meid", "lifeTime", "lifeCount"};
        for (size_t i = 0; i < catalogue.m_basic.size(); ++i)
            catalogue.m_basic[i] = single(basic[QLatin1String(basicNames[i])].toObject(), QLatin1String(basicNames[i]),
                                          QLatin1String(BasicInformationTitles[i]),
                                          QStringLiteral("\"%1\" on the page Basic Information")
                                              .arg(QLatin1String(BasicInformationTitles[i])));
        catalogue.m_profileCount = single(root[QLatin1String("profileCount")].toObject(),
                                          QStringLiteral("profileCount"), QStringLiteral("MIP Profile Count"),
                                          QStringLiteral("the number of MIP profiles"));
        catalogue.m_activeProfile = single(root[QLatin1String("activeProfile")].toObject(),
                                           QStringLiteral("activeProfile"), QStringLiteral("Active MIP Profile"),
                                           QStringLiteral("the active MIP profile"));

        const QJsonArray pages = root[QLatin1String("pages")].toArray();
        std::set<int> listed;
        catalogue.m_pages.reserve(size_t(pages.size())); // the sheets point into it
        for (const QJsonValue& value : pages) {
            const QJsonObject object = value.toObject();
            const int16_t number = pageNumber(object[QLatin1String("page")]);
            if (!listed.insert(number).second)
                fail(QStringLiteral("page %1 is listed twice").arg(number));
            Page& page = catalogue.m_pages.emplace_back(Page{number, {}});
            const std::vector<Sheet> sheets = SheetsOf(page);
            const QString label = QString::number(number);
            const int columns = ValueColumns(number);
            for (const QJsonValue& row : object[QLatin1String("rows")].toArray())
                page.rows.push_back(readRow(row.toObject(), label, columns, sheets));
            catalogue.m_sheets.insert(catalogue.m_sheets.end(), sheets.begin(), sheets.end());
        }
        catalogue.m_addresses = std::move(m_addresses);
        catalogue.m_factory = std::move(m_factory);
        catalogue.m_protected = std::move(m_protected);
        catalogue.m_places = std::move(m_places);
        catalogue.m_named = std::move(m_named);
        return catalogue;
    }

private:
    [[noreturn]] void fail(const QString& what) const
    {
        throw std::runtime_error(QStringLiteral("NV catalogue %1: %2").arg(m_path, what).toStdString());
    }

    Field field(const QJsonObject& object, uint16_t item, const QString& where) const
    {
        Field field;
        field.item = item;
        field.indexed = object[QLatin1String("indexed")].toBool();
        field.offset = object[QLatin1String("offset")].toInt();
        field.width = object[QLatin1String("width")].toInt();
        const auto encoding = EncodingNamed(object[QLatin1String("encoding")].toString());
        if (!encoding)
            fail(QStringLiteral("%1: the encoding is missing or unknown").arg(where));
        field.encoding = *encoding;
        for (const QJsonValue& choice : object[QLatin1String("choices")].toArray())
            field.choices << choice.toString();
        if (const QString problem = LayoutProblem(field); !problem.isEmpty())
            fail(QStringLiteral("%1: %2").arg(where, problem));
        return field;
    }

    // The number of a page of the panel that the catalogue fills: one that a
    // node of the tree shows as a grid, the second NAM and the profiles
    // through the page that stands for them.
    int16_t pageNumber(const QJsonValue& value) const
    {
        const int number = value.toInt(-1);
        const PageEntry* entry = FindPage(int16_t(std::clamp(number, -1, int(LastFixedPage) + 1)));
        if (!entry || !entry->node)
            fail(QStringLiteral("page %1 is not a page of values of the panel").arg(number));
        if (entry->parent)
            fail(QStringLiteral("page %1 is filled as a profile of page %2").arg(number).arg(ProfilesPart));
        if (number == SecondNamPage)
            fail(QStringLiteral("page %1 is filled as the second NAM of page 0").arg(number));
        return int16_t(number);
    }

    uint16_t itemNumber(const QJsonValue& value, const QString& where) const
    {
        const int item = value.toInt(-1);
        if (item < 0 || item > 0xFFFF)
            fail(QStringLiteral("%1: the item number is missing or out of range").arg(where));
        return uint16_t(item);
    }

    // A value of its own, outside the pages: one field and its default,
    // titled `title` and shown at `shown`.
    Field single(const QJsonObject& object, const QString& where, const QString& title, const QString& shown)
    {
        const Field result = field(object, itemNumber(object[QLatin1String("item")], where), where);
        place(result, 0, object[QLatin1String("default")], where);
        m_places.try_emplace(result.address(0), shown);
        m_named.try_emplace(result.address(0), NamedField{title, result});
        if (const QJsonValue protect = object[QLatin1String("protect")]; !protect.isUndefined()) {
            if (!QStringList{"identity", "counter", "read-only"}.contains(protect.toString()))
                fail(QStringLiteral("%1: \"protect\" is one of identity, counter, read-only").arg(where));
            m_protected[result.item] = protect.toString();
        }
        return result;
    }

    Row readRow(const QJsonObject& object, const QString& page, int valueColumns, const std::vector<Sheet>& sheets)
    {
        Row row;
        row.title = object[QLatin1String("title")].toString();
        const QString where = QStringLiteral("page %1, \"%2\"").arg(page, row.title);
        if (row.title.isEmpty())
            fail(QStringLiteral("%1: the row has no title").arg(where));

        // One item for all columns, its columns `stride` bytes apart, or one
        // item per column.
        const QJsonValue items = object[QLatin1String("item")];
        const int columns = items.isArray() ? int(items.toArray().size()) : object[QLatin1String("columns")].toInt(1);
        if (columns < 1 || columns > valueColumns)
            fail(QStringLiteral("%1: the page has %2 value columns").arg(where).arg(valueColumns));
        const int width = object[QLatin1String("width")].toInt();
        const int stride = object[QLatin1String("stride")].toInt(width);
        for (int column = 0; column < columns; ++column) {
            QJsonObject shifted = object;
            shifted[QLatin1String("offset")]
                = object[QLatin1String("offset")].toInt() + (items.isArray() ? 0 : column * stride);
            const uint16_t item = itemNumber(items.isArray() ? items[column] : items, where);
            row.columns.push_back(field(shifted, item, where));
        }

        const QJsonValue readOnly = object[QLatin1String("readOnly")];
        for (size_t copy = 0; copy < sheets.size(); ++copy)
            row.readOnly.push_back(readOnly.isArray() ? readOnly[qsizetype(copy)].toBool() : readOnly.toBool());

        // "default" holds for every copy, "defaults" lists one for each.
        const QJsonValue defaults = object[QLatin1String("defaults")];
        if (!defaults.isUndefined() && (!defaults.isArray() || defaults.toArray().size() != qsizetype(sheets.size())))
            fail(QStringLiteral("%1: \"defaults\" needs one value for each of the %2 copies")
                     .arg(where)
                     .arg(sheets.size()));
        for (const Sheet& sheet : sheets) {
            const QJsonValue value = defaults.isArray() ? defaults[sheet.copy] : object[QLatin1String("default")];
            if (value.isArray() && value.toArray().size() != columns)
                fail(
                    QStringLiteral("%1: a default needs one value for each of the %2 columns").arg(where).arg(columns));
            for (int column = 0; column < columns; ++column) {
                place(row.columns[size_t(column)], sheet.copy, value.isArray() ? value[column] : value, where);
                m_places.try_emplace(row.columns[size_t(column)].address(sheet.copy),
                                     QStringLiteral("\"%1\" on the page %2").arg(row.title, sheet.name));
                m_named.try_emplace(row.columns[size_t(column)].address(sheet.copy),
                                    NamedField{row.title, row.columns[size_t(column)]});
            }
        }
        return row;
    }

    // Counts the field's item among the read, and writes its factory value.
    void place(const Field& field, int copy, const QJsonValue& value, const QString& where)
    {
        const NvAddress address = field.address(copy);
        if (m_seen.insert(address).second) {
            m_addresses.push_back(address);
            NvData& data = m_factory[address];
            data.fill(0);
            if (field.indexed)
                data[0] = uint8_t(copy);
        }
        if (value.isUndefined())
            return; // zero bytes
        const QString text = value.isDouble() ? QString::number(value.toInteger()) : value.toString();
        if (const QString problem = Encode(field, text, m_factory[address]); !problem.isEmpty())
            fail(QStringLiteral("%1: the default \"%2\" %3").arg(where, text, problem));
    }

    QString m_path;
    std::set<NvAddress> m_seen;
    std::vector<NvAddress> m_addresses;
    NvImage m_factory;
    std::map<uint16_t, QString> m_protected;
    std::map<NvAddress, QString> m_places;
    std::map<NvAddress, NamedField> m_named;
};

QString Catalogue::protection(uint16_t item) const
{
    const auto found = m_protected.find(item);
    return found == m_protected.end() ? QString() : found->second;
}

QString Catalogue::placeOf(NvAddress address) const
{
    const auto found = m_places.find(address);
    return found == m_places.end() ? QString() : found->second;
}

const NamedField* Catalogue::named(NvAddress address) const
{
    const auto found = m_named.find(address);
    return found == m_named.end() ? nullptr : &found->second;
}

Catalogue Catalogue::Load(const QString& path)
{
    return CatalogueReader(path).read();
}

const Catalogue& Catalogue::BuiltIn()
{
    static const Catalogue builtIn = Load(QStringLiteral(":/tessaly/model/Catalogue.json"));
    return builtIn;
}

std::set<uint16_t> Catalogue::indexedItems() const
{
    std::set<uint16_t> indexed;
    for (const NvAddress& address : m_addresses)
        if (address.index >= 0)
            indexed.insert(address.item);
    return indexed;
}

} // namespace tessaly::model
