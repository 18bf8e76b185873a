// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/RoamingListPages.h"

#include "model/ErrorNumbers.h"
#include "model/RoamingListCells.h"

#include <tessaly/Tessaly.h>

namespace tessaly::model {

namespace {

const QString SystemsName = QStringLiteral("Roaming List");
const QString AcquisitionsName = QStringLiteral("Acquisition Table");

// The columns' titles and widths in twips, the row titles' column first:
// together as wide as the panel's page.
const QStringList SystemTitles = {QStringLiteral("#"),        QStringLiteral("SID"),      QStringLiteral("NID"),
                                  QStringLiteral("Kind"),     QStringLiteral("Region"),   QStringLiteral("Priority"),
                                  QStringLiteral("Acq"),      QStringLiteral("Roaming")};
const std::vector<int> SystemWidths = {480, 780, 780, 1050, 720, 840, 560, 1240};
const QStringList AcquisitionTitles = {QStringLiteral("#"),       QStringLiteral("Type"),   QStringLiteral("System"),
                                       QStringLiteral("Pri/Sec"), QStringLiteral("Blocks"), QStringLiteral("Channels")};
const std::vector<int> AcquisitionWidths = {400, 2650, 700, 750, 900, 1250};

TessalyError Gone()
{
    return TessalyError(errPanelGone, QStringLiteral("the roaming list pages are gone"));
}

// A cell that holds no value of its field: nothing is written.
TessalyError Refused(const QString& page, const QString& record, int row, const QString& column, const QString& text,
                     const QString& why)
{
    return TessalyError(errValueRefused, QStringLiteral("the value \"%1\" of %2 on the page %3 (%4 %5) %6. Nothing was "
                                                        "written to the handset; correct it and write again")
                                             .arg(text, column, page, record)
                                             .arg(row)
                                             .arg(why));
}

int Number(const QString& text, int low, int high)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    return ok && value >= low && value <= high ? value : -1;
}

} // namespace

RoamingListPages::RoamingListPages(Tessaly& panel, int16_t systems, int16_t acquisitions)
    : m_panel(&panel)
    , m_systemsPage(systems)
    , m_acquisitionsPage(acquisitions)
{
    dress(systems, SystemTitles, SystemWidths);
    dress(acquisitions, AcquisitionTitles, AcquisitionWidths);
}

// The titles and widths go to the page's grid itself, found by its name: the
// host's methods fill the item rows alone.
void RoamingListPages::dress(int16_t page, const QStringList& titles, const std::vector<int>& widths)
{
    QObject* grid = m_panel->findChild<QObject*>(QStringLiteral("MSFlexGrid1(%1)").arg(page));
    if (!grid)
        throw Gone();
    for (int col = 0; col < titles.size(); ++col) {
        QMetaObject::invokeMethod(grid, "setTextMatrix", Qt::DirectConnection, Q_ARG(int, 0), Q_ARG(int, col),
                                  Q_ARG(QString, titles[col]));
        QMetaObject::invokeMethod(grid, "setColWidth", Qt::DirectConnection, Q_ARG(int, col),
                                  Q_ARG(int, widths[size_t(col)]));
    }
}

void RoamingListPages::show(const QByteArray& bytes)
{
    if (!m_panel)
        throw Gone();
    PrlDecoding decoding = DecodePrl(bytes);
    m_list = std::move(decoding.list);
    m_problem = decoding.problem;
    showSystems();
    showAcquisitions();
}

void RoamingListPages::showSystems()
{
    const std::vector<PrlSystem> none;
    const std::vector<PrlSystem>& systems = m_list ? m_list->systems : none;
    const int rows = std::min<int>(int(systems.size()), MaxRows);
    m_panel->SetNVFieldItemCount(m_systemsPage, int16_t(std::max(rows, 1)));
    m_systemTexts.clear();
    int region = 0;
    for (int i = 0; i < std::max(rows, 1); ++i) {
        const PrlSystem* system = i < rows ? &systems[size_t(i)] : nullptr;
        QStringList texts;
        if (system) {
            region += system->sameRegion ? 0 : 1;
            const bool cdma = system->type == SysCdma && system->unknown.isEmpty();
            texts << (cdma ? QString::number(system->sid) : system->type == SysHrpd ? QStringLiteral("HRPD")
                                                                                    : QStringLiteral("unknown"))
                  << (system->type == SysHrpd ? QString::fromLatin1(system->subnet.toHex()) : PrlNidText(*system))
                  << PrlKindChoices()[system->preferred ? 0 : 1] << QString::number(region)
                  << PrlPriorityText(*system) << QString::number(system->acquisitionIndex)
                  << PrlRoamingText(system->roamingIndicator);
        } else {
            texts = QStringList(SystemColumns - 1, QString());
        }
        // An HRPD or unknown record, and every record of a list that is not
        // valid, are shown only.
        const bool readOnly = !system || !m_problem.isEmpty() || system->type != SysCdma || !system->unknown.isEmpty();
        const auto put = [&](int col, bool number, const QString& format, const QStringList& choices) {
            m_panel->AddItemToGrd(m_systemsPage, format, number, readOnly, choices.join(QLatin1Char('|')),
                                  texts[col - 1], i + 1, col);
        };
        m_panel->AddItemToGrid2(m_systemsPage, QString(), true, QString(), system ? QString::number(i) : QString(),
                                i + 1, 0);
        put(SidColumn, true, QStringLiteral("#####"), {});
        put(NidColumn, false, QStringLiteral("######"), {});
        put(KindColumn, false, QString(), PrlKindChoices());
        put(RegionColumn, true, QStringLiteral("#####"), {});
        put(PriorityColumn, false, QString(), PrlPriorityChoices() << QStringLiteral("-"));
        put(AcquisitionColumn, true, QStringLiteral("###"), {});
        put(RoamingColumn, false, QStringLiteral("###############"), PrlRoamingChoices() << QStringLiteral("-"));
        if (system)
            m_systemTexts.push_back(texts);
    }
}

void RoamingListPages::showAcquisitions()
{
    const std::vector<PrlAcquisition> none;
    const std::vector<PrlAcquisition>& records = m_list ? m_list->acquisitions : none;
    const PrlLayout layout = m_list ? m_list->layout : PrlLayout::Standard;
    const int rows = std::min<int>(int(records.size()), MaxRows);
    m_panel->SetNVFieldItemCount(m_acquisitionsPage, int16_t(std::max(rows, 1)));
    m_acquisitionTexts.clear();
    for (int i = 0; i < std::max(rows, 1); ++i) {
        const PrlAcquisition* record = i < rows ? &records[size_t(i)] : nullptr;
        const uint8_t type = record ? record->type : 0;
        // An unknown type's fields are not known: its bytes are shown, never
        // read as another type's fields.
        const bool known = record && PrlAcquisitionKnown(*record, layout);
        QStringList texts(AcquisitionColumns - 1, QString());
        if (record) {
            texts[TypeColumn - 1] = PrlAcquisitionTypeText(type, layout);
            if (known && HasPrlSystem(type))
                texts[CellularColumn - 1] = PrlSystemText(record->system);
            if (known && HasPrlPrimarySecondary(type))
                texts[PrimarySecondaryColumn - 1] = PrlPrimarySecondaryText(record->primarySecondary);
            if (known && HasPrlBlocks(type))
                texts[BlocksColumn - 1] = PrlBlocksText(record->blocks);
            if (known && HasPrlChannels(type))
                texts[ChannelsColumn - 1] = PrlChannelsText(*record);
            if (!known && !record->unknown.isEmpty())
                texts[ChannelsColumn - 1] = QString::fromLatin1(record->unknown.toHex(' '));
        }
        const bool editable = known && m_problem.isEmpty();
        const auto put = [&](int col, bool has, const QStringList& choices) {
            m_panel->AddItemToGrd(m_acquisitionsPage, QString(), false, !(editable && has),
                                  choices.join(QLatin1Char('|')), texts[col - 1], i + 1, col);
        };
        m_panel->AddItemToGrid2(m_acquisitionsPage, QString(), true, QString(), record ? QString::number(i) : QString(),
                                i + 1, 0);
        put(TypeColumn, false, {});
        put(CellularColumn, HasPrlSystem(type), PrlSystemChoices());
        put(PrimarySecondaryColumn, HasPrlPrimarySecondary(type), PrlChannelChoices());
        put(BlocksColumn, HasPrlBlocks(type), {});
        put(ChannelsColumn, HasPrlChannels(type), {});
        if (record)
            m_acquisitionTexts.push_back(texts);
    }
}

std::vector<QStringList> RoamingListPages::cells(int16_t page, int rows, int columns) const
{
    if (!m_panel)
        throw Gone();
    std::vector<QStringList> texts(static_cast<size_t>(rows));
    for (int row = 0; row < rows; ++row)
        for (int col = 1; col < columns; ++col)
            texts[size_t(row)] << m_panel->GetItemFromGrd(page, row + 1, col - 1);
    return texts;
}

std::optional<QByteArray> RoamingListPages::edited() const
{
    if (!m_list)
        return std::nullopt;
    const std::vector<QStringList> systems = cells(m_systemsPage, int(m_systemTexts.size()), SystemColumns);
    const std::vector<QStringList> records
        = cells(m_acquisitionsPage, int(m_acquisitionTexts.size()), AcquisitionColumns);
    if (systems == m_systemTexts && records == m_acquisitionTexts)
        return std::nullopt;
    if (!m_problem.isEmpty())
        throw TessalyError(errValueRefused, QStringLiteral("the handset's roaming list is not valid (%1), so its pages "
                                                           "are not written. Nothing was written to the handset")
                                                .arg(m_problem));
    Prl list = *m_list;
    readAcquisitions(list, records);
    readSystems(list, systems);
    return EncodePrl(list);
}

void RoamingListPages::readSystems(Prl& list, const std::vector<QStringList>& cells) const
{
    int region = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
        PrlSystem& system = list.systems[i];
        const QStringList& now = cells[i];
        const QStringList& was = m_systemTexts[i];
        const auto refuse = [&](int col, const QString& why) {
            return Refused(SystemsName, QStringLiteral("system"), int(i), SystemTitles[col], now[col - 1], why);
        };
        // Each field the user changed, read from its cell.
        const auto read = [&](int col, const auto& reader) {
            if (now[col - 1] == was[col - 1])
                return;
            if (const QString why = reader(now[col - 1]); !why.isEmpty())
                throw refuse(col, why);
        };
        read(SidColumn, [&](const QString& text) { return ReadPrlSid(text, system); });
        read(NidColumn, [&](const QString& text) { return ReadPrlNid(text, system); });
        read(KindColumn, [&](const QString& text) {
            const int kind = int(PrlKindChoices().indexOf(text.trimmed()));
            system.preferred = kind == 0;
            return kind < 0 ? QStringLiteral("is neither preferred nor negative") : QString();
        });
        read(PriorityColumn, [&](const QString& text) {
            const int priority = int(PrlPriorityChoices().indexOf(text.trimmed()));
            system.morePreferred = priority == 0;
            return priority < 0 && text.trimmed() != QLatin1String("-") ? QStringLiteral("is neither more nor same")
                                                                         : QString();
        });
        read(AcquisitionColumn, [&](const QString& text) {
            const int last = int(list.acquisitions.size()) - 1;
            const int index = Number(text, 0, last);
            if (index >= 0)
                system.acquisitionIndex = uint16_t(index);
            return index >= 0 ? QString()
                              : QStringLiteral("is not the index of an acquisition record: 0 to %1").arg(last);
        });
        read(RoamingColumn, [&](const QString& text) { return ReadPrlRoaming(text, system.roamingIndicator); });
        // Regions run in order: each system is in the region of the one
        // before it or starts the next.
        const int at = Number(now[RegionColumn - 1], 1, 65535);
        if (at < 0 || (at != region && at != region + 1))
            throw refuse(RegionColumn, i == 0 ? QStringLiteral("is not 1, the first region")
                                              : QStringLiteral("is neither the region of the system before it (%1) "
                                                               "nor the next (%2)")
                                                    .arg(region)
                                                    .arg(region + 1));
        system.sameRegion = at == region;
        region = at;
        // A negative system has no priority, nor in the IS-683-A list a
        // roaming indicator; a preferred one there needs one.
        if (!system.preferred) {
            system.morePreferred = false;
            if (list.layout == PrlLayout::Standard)
                system.roamingIndicator.reset();
        } else if (list.layout == PrlLayout::Standard && !system.roamingIndicator) {
            system.roamingIndicator = list.defaultRoaming;
        }
    }
}

void RoamingListPages::readAcquisitions(Prl& list, const std::vector<QStringList>& cells) const
{
    for (size_t i = 0; i < cells.size(); ++i) {
        PrlAcquisition& record = list.acquisitions[i];
        const QStringList& now = cells[i];
        const QStringList& was = m_acquisitionTexts[i];
        const auto read = [&](int col, const auto& reader) {
            if (now[col - 1] == was[col - 1])
                return;
            if (const QString why = reader(now[col - 1]); !why.isEmpty())
                throw Refused(AcquisitionsName, QStringLiteral("record"), int(i), AcquisitionTitles[col], now[col - 1],
                              why);
        };
        read(CellularColumn, [&](const QString& text) { return ReadPrlSystem(text, record.system); });
        read(PrimarySecondaryColumn,
             [&](const QString& text) { return ReadPrlPrimarySecondary(text, record.primarySecondary); });
        read(BlocksColumn, [&](const QString& text) { return ReadPrlBlocks(text, record.blocks); });
        read(ChannelsColumn, [&](const QString& text) { return ReadPrlChannels(text, record); });
    }
}

} // namespace tessaly::model
