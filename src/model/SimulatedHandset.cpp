#include "model/SimulatedHandset.h"

#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"

#include <tessaly/Tessaly.h>

#include <QMessageBox>

#include <algorithm>
#include <thread>

namespace tessaly::model {

namespace {

enum Process : int32_t { ProcessRead = 1, ProcessWrite = 2, ProcessRestore = 3 };

} // namespace

SimulatedHandset::SimulatedHandset(Tessaly& panel, NvMemory& memory, QObject* parent)
    : IBaseModel(parent)
    , m_panel(panel)
    , m_memory(memory)
    , m_catalogue(Catalogue::BuiltIn())
{
}

void SimulatedHandset::GetModelName(QString& name)
{
    name = QStringLiteral("Halvane SIM-800");
}

void SimulatedHandset::GetPortNumber(QString& port)
{
    port = QString::number(Port);
}

// A command is one process of sub-processes. The panel's bar follows one
// sub-process at a time: its start clears the count, its announcement sets
// the bar's total, and its end brings the count to that total.
void SimulatedHandset::announce(int32_t process, int32_t steps)
{
    emit SetProcessStep(process, 1, Port);
    emit GetTotalProgressCount(steps, Port);
}

template <class Step> void SimulatedHandset::subProcess(int32_t number, const QString& name, int32_t steps, Step&& step)
{
    emit SetSubProcessStep(number, 1, Port);
    emit GetSubTotalProgressCount(name, steps, Port);
    for (int32_t i = 0; i < steps; ++i) {
        step(i);
        emit StepIt(Port);
    }
    emit SetSubProcessStep(number, 2, Port);
}

// The line time of one NV item, when a pace is set.
void SimulatedHandset::transfer()
{
    if (m_pace.count() > 0)
        std::this_thread::sleep_for(m_pace);
}

void SimulatedHandset::NVRead()
{
    const std::vector<NvAddress>& addresses = m_catalogue.addresses();
    const auto pages = int32_t(m_catalogue.sheets().size()) + 1;
    announce(ProcessRead, int32_t(addresses.size()) + pages);
    NvImage read;
    subProcess(1, QStringLiteral("Reading NV items"), int32_t(addresses.size()), [&](int32_t i) {
        const NvAddress address = addresses[size_t(i)];
        transfer();
        NvData& data = read[address];
        const NvStatus status = m_memory.read(address, data);
        if (status == NvStatus::Inactive) {
            // An item never written holds nothing: its values read as zeros.
            data.fill(0);
            if (address.index >= 0)
                data[0] = uint8_t(address.index);
        } else if (status != NvStatus::Done) {
            throw TessalyError(errItemUnreadable,
                             QStringLiteral("%1 could not be read: the handset answered with status %2")
                                 .arg(Describe(address))
                                 .arg(int(status)));
        }
    });
    m_lastRead = std::move(read);
    m_memory.readDone();
    fillPanel(2);
    emit SetProcessStep(ProcessRead, 2, Port);
}

void SimulatedHandset::NVWrite()
{
    // Every value is encoded before the first item is written: a value that
    // its item cannot hold stops the write with the handset untouched.
    NvImage values;
    try {
        values = valuesOfPanel();
    } catch (const TessalyError& refusal) {
        if (refusal.number() != errValueRefused)
            throw;
        // A value the user can correct: told here, and the command ends as
        // any other, so that the bar stays at the user's service.
        QMessageBox::warning(m_panel.window(), QStringLiteral("NV Write"), refusal.description());
        return;
    }
    announce(ProcessWrite, int32_t(values.size()));
    writeItems(values, QStringLiteral("Writing NV items"));
    emit SetProcessStep(ProcessWrite, 2, Port);
}

void SimulatedHandset::NVRestore()
{
    const NvImage& read = lastRead("Restore");
    announce(ProcessRestore, int32_t(read.size() + m_catalogue.sheets().size()) + 1);
    writeItems(read, QStringLiteral("Restoring NV items"));
    fillPanel(2);
    emit SetProcessStep(ProcessRestore, 2, Port);
}

const NvImage& SimulatedHandset::lastRead(const char* command) const
{
    if (!m_lastRead)
        throw TessalyError(errNothingRead,
                         QStringLiteral("%1 needs the values of an NV Read first.").arg(QLatin1String(command)));
    return *m_lastRead;
}

// Writes the items one by one as sub-process 1, then has the memory keep
// them. An item that fails ends the run; those written before it are kept.
void SimulatedHandset::writeItems(const NvImage& items, const QString& name)
{
    auto next = items.begin();
    try {
        subProcess(1, name, int32_t(items.size()), [&](int32_t) {
            transfer();
            const NvStatus status = m_memory.write(next->first, next->second);
            if (status != NvStatus::Done)
                throw TessalyError(errItemUnwritable,
                                 QStringLiteral("%1 could not be written: the handset answered "
                                                "with status %2")
                                     .arg(Describe(next->first))
                                     .arg(int(status)));
            ++next;
        });
    } catch (const TessalyError&) {
        m_memory.commit();
        throw;
    }
    m_memory.commit();
}

// The items of the last read with every value that the user may edit taken
// from the panel, or the refusal of the first value that does not fit.
NvImage SimulatedHandset::valuesOfPanel() const
{
    const NvImage& read = lastRead("NV Write");
    NvImage values;
    const auto put = [&](const Field& field, int copy, const QString& text, const QString& where) {
        const NvAddress address = field.address(copy);
        NvData& data = values.try_emplace(address, read.at(address)).first->second;
        if (const QString problem = Encode(field, text, data); !problem.isEmpty())
            throw TessalyError(errValueRefused,
                             QStringLiteral("NV Write refused %1: the value \"%2\" %3. Nothing was "
                                            "written to the handset.")
                                 .arg(where, text, problem));
    };
    for (const Sheet& sheet : m_catalogue.sheets()) {
        const int16_t part = partIn(sheet);
        const std::vector<Row>& rows = sheet.page->rows;
        for (size_t r = 0; r < rows.size() && part >= 0; ++r) {
            if (rows[r].readOnly[size_t(sheet.copy)])
                continue;
            const std::vector<Field>& columns = rows[r].columns;
            for (size_t c = 0; c < columns.size(); ++c) {
                const QString where = columns.size() == 1
                    ? QStringLiteral("\"%1\" on the page %2").arg(rows[r].title, sheet.name)
                    : QStringLiteral("\"%1\", column %2, on the page %3").arg(rows[r].title).arg(c + 1).arg(sheet.name);
                put(columns[c], sheet.copy, m_panel.GetItemFromGrd(part, int32_t(r + 1), sheet.readColumn(c)),
                    where);
            }
        }
    }
    put(m_catalogue.profileCount(), 0, QString::number(m_panel.GetProfileCount()),
        QStringLiteral("the number of MIP profiles"));
    put(m_catalogue.activeProfile(), 0, QString::number(m_panel.GetActiveProfileIndex()),
        QStringLiteral("the active MIP profile"));
    return values;
}

// Fills the panel from the last read as sub-process `number`: first the
// basic information and the profile selection, then one page a step.
void SimulatedHandset::fillPanel(int32_t number)
{
    const NvImage& read = *m_lastRead;
    const auto value = [&](const Field& field) { return Decode(field, read.at(field.address(0))); };
    const std::vector<Sheet>& sheets = m_catalogue.sheets();
    subProcess(number, QStringLiteral("Filling pages"), int32_t(sheets.size()) + 1, [&](int32_t i) {
        if (i > 0) {
            fillSheet(sheets[size_t(i - 1)]);
            return;
        }
        const std::array<Field, 6>& basic = m_catalogue.basicInformation();
        m_panel.SetBasicInfo(value(basic[0]), value(basic[1]), value(basic[2]), value(basic[3]), value(basic[4]),
                             value(basic[5]));
        // The panel takes 1 to 6 profiles, numbered from 0.
        m_panel.SetProfileCount(int16_t(std::clamp(value(m_catalogue.profileCount()).toInt(), 1, 6)));
        m_panel.SetActiveProfileIndex(int16_t(std::clamp(value(m_catalogue.activeProfile()).toInt(), 0, 5)));
    });
}

// The panel's number of a sheet's page. The handset's own page is added to
// the panel, as wide as its widest row, the first time it is filled.
int16_t SimulatedHandset::partOf(const Sheet& sheet)
{
    if (sheet.part < 0 && m_ownPage < 0) {
        size_t columns = 1;
        for (const Row& row : sheet.page->rows)
            columns = std::max(columns, row.columns.size());
        m_ownPage = m_panel.AddTab(sheet.name, int16_t(columns + 1));
    }
    return partIn(sheet);
}

int16_t SimulatedHandset::partIn(const Sheet& sheet) const
{
    return sheet.part >= 0 ? sheet.part : m_ownPage;
}

void SimulatedHandset::fillSheet(const Sheet& sheet)
{
    const NvImage& read = *m_lastRead;
    const std::vector<Row>& rows = sheet.page->rows;
    const int16_t part = partOf(sheet);
    if (sheet.titles) {
        m_panel.SetNVFieldItemCount(part, int16_t(rows.size()));
        for (size_t r = 0; r < rows.size(); ++r)
            m_panel.AddItemToGrid2(part, QString(), false, QString(), rows[r].title, int32_t(r + 1), 0);
    }
    for (size_t r = 0; r < rows.size(); ++r) {
        const bool readOnly = rows[r].readOnly[size_t(sheet.copy)];
        const std::vector<Field>& columns = rows[r].columns;
        for (size_t c = 0; c < columns.size(); ++c) {
            const Field& field = columns[c];
            m_panel.AddItemToGrd(part, QString(MaxLength(field), u'#'), TakesDigitsOnly(field), readOnly,
                                 field.choices.join(u'|'), Decode(field, read.at(field.address(sheet.copy))),
                                 int32_t(r + 1), sheet.fillColumn(c));
        }
    }
}

} // namespace tessaly::model
