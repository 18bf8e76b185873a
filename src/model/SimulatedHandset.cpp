// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/SimulatedHandset.h"

#include "model/Catalogue.h"
#include "model/ErrorNumbers.h"

#include <tessaly/Tessaly.h>

#include <QEventLoop>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>

namespace tessaly::model {

namespace {

enum Process : int32_t { ProcessRead = 1, ProcessWrite = 2, ProcessRestore = 3 };

QString Listed(const std::vector<NvAddress>& addresses)
{
    QStringList names;
    for (const NvAddress& address : addresses)
        names << Describe(address);
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

} // namespace

SimulatedHandset::SimulatedHandset(Tessaly& panel, NvMemory& memory, QObject* parent)
    : IBaseModel(parent)
    , m_panel(&panel)
    , m_memory(memory)
    , m_catalogue(Catalogue::BuiltIn())
{
}

void SimulatedHandset::setIdentity(QString name, QString port)
{
    m_name = std::move(name);
    m_port = std::move(port);
}

void SimulatedHandset::setItemsPage(ItemsPage* page, ItemsSource source)
{
    m_itemsPage = page;
    m_itemsSource = std::move(source);
}

void SimulatedHandset::GetModelName(QString& name)
{
    name = m_name;
}

void SimulatedHandset::GetPortNumber(QString& port)
{
    port = m_port;
}

// Runs a command's work; a fault of the handset, its line or its files ends
// it with one box, and the command returns as any other.
void SimulatedHandset::run(const QString& command, const std::function<void()>& work)
{
    m_current.reset();
    m_succeeded = m_panel != nullptr;
    if (!m_panel)
        return;
    try {
        work();
    } catch (const TessalyError& fault) {
        m_succeeded = false;
        const QString at = m_current ? QStringLiteral(" at %1").arg(where(*m_current)) : QString();
        bool numbered = false;
        m_port.toInt(&numbered); // a COM port's number, or a device as the user named it
        tell(true, command,
             QStringLiteral("%1 failed%2, on %3: %4")
                 .arg(command, at, numbered ? QStringLiteral("COM") + m_port : m_port, fault.description()));
    }
}

void SimulatedHandset::tell(bool fault, const QString& title, const QString& text)
{
    if (!m_panel)
        return; // the host has ended the panel: no one to tell
    // The host may end the panel, and the box with it, while the box is open.
    const QPointer<QMessageBox> box = new QMessageBox(fault ? QMessageBox::Warning : QMessageBox::Information, title,
                                                      text, QMessageBox::Ok, m_panel->window());
    box->exec();
    delete box.data();
}

// "NV item 178 (index 1), "Mobile Directory Number (MDN)" on the page System NAM2"
QString SimulatedHandset::where(NvAddress address) const
{
    const QString place = m_catalogue.placeOf(address);
    return place.isEmpty() ? Describe(address) : Describe(address) + QStringLiteral(", ") + place;
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
        if (!m_panel)
            throw TessalyError(errPanelGone, QStringLiteral("the panel was closed"));
        step(i);
        emit StepIt(Port);
    }
    emit SetSubProcessStep(number, 2, Port);
}

// The line time of one NV item, when a pace is set: the windows keep
// painting, the user's input waits.
void SimulatedHandset::transfer()
{
    if (m_pace.count() <= 0)
        return;
    QEventLoop loop;
    QTimer::singleShot(m_pace, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void SimulatedHandset::NVRead()
{
    run(QStringLiteral("NV Read"), [this] {
        const std::vector<NvAddress>& addresses = m_catalogue.addresses();
        const auto pages = int32_t(m_catalogue.sheets().size()) + 1;
        announce(ProcessRead, int32_t(addresses.size()) + 1 + pages);
        NvImage read;
        std::map<NvAddress, NvStatus> lacking;
        // The items one a step, then the memory's copy of them (a live
        // handset's backup) as the last step.
        subProcess(1, QStringLiteral("Reading NV items"), int32_t(addresses.size()) + 1, [&](int32_t i) {
            if (size_t(i) == addresses.size()) {
                m_current.reset();
                m_memory.readDone();
                return;
            }
            m_current = addresses[size_t(i)];
            transfer();
            NvData& data = read[*m_current];
            const NvStatus status = m_memory.read(*m_current, data);
            if (Lacks(status)) {
                lacking[*m_current] = status;
                data.fill(0);
            } else if (status != NvStatus::Done) {
                throw TessalyError(errItemUnreadable, QStringLiteral("the handset answered: %1")
                                                          .arg(NvStatusText(uint16_t(status))));
            }
        });
        m_lastRead = read;
        m_onHandset = std::move(read);
        m_lacking = std::move(lacking);
        fillPanel(2, *m_lastRead);
        if (m_itemsPage)
            listItems(3);
        if (m_roamingPages && m_roamingSource)
            showRoamingList(4);
        emit SetProcessStep(ProcessRead, 2, Port);
        tellLacking();
    });
}

// One box for every item the handset lacks, at the end of a read.
void SimulatedHandset::tellLacking()
{
    if (m_lacking.empty())
        return;
    QStringList lines;
    for (const auto& [address, status] : m_lacking)
        lines << QStringLiteral("%1: status %2").arg(where(address)).arg(int(status));
    tell(false, QStringLiteral("NV Read"),
         QStringLiteral("The handset does not have %1 of the items; their values stay empty and are never written:\n%2")
             .arg(m_lacking.size())
             .arg(lines.join(QLatin1Char('\n'))));
}

void SimulatedHandset::NVWrite()
{
    run(QStringLiteral("NV Write"), [this] {
        // Every value is encoded before the first item is written: a value
        // that its item cannot hold stops the write with the handset untouched.
        NvImage values = writable(valuesOfPanel());
        // An item edited by its bytes on the NV Items page is written as
        // edited there, over whatever the other pages say of it; those pages
        // then show its new values.
        const NvImage edited = itemsEdited();
        // So is the roaming list edited on its pages: built and checked first.
        const std::optional<QByteArray> list = roamingListEdited();
        bool pagesChange = false;
        for (const auto& [address, data] : edited) {
            pagesChange = pagesChange || values.count(address) > 0;
            values.insert_or_assign(address, data);
        }
        const auto pages = int32_t(m_catalogue.sheets().size()) + 1;
        announce(ProcessWrite, int32_t(values.size()) + 1 + (pagesChange ? pages : 0));
        writeItems(values, QStringLiteral("Writing NV items"));
        if (pagesChange)
            fillPanel(3, known(QStringLiteral("NV Write")));
        showWritten(values);
        if (list)
            writeRoamingList(4, *list);
        emit SetProcessStep(ProcessWrite, 2, Port);
    });
}

void SimulatedHandset::NVRestore()
{
    run(QStringLiteral("Restore"), [this] {
        const NvImage items = writable(lastRead(QStringLiteral("Restore")));
        announce(ProcessRestore, int32_t(items.size() + m_catalogue.sheets().size()) + 2);
        writeItems(items, QStringLiteral("Restoring NV items"));
        fillPanel(2, *m_lastRead);
        showWritten(items);
        emit SetProcessStep(ProcessRestore, 2, Port);
    });
}

NvImage SimulatedHandset::known(const QString& command) const
{
    NvImage items = lastRead(command);
    for (auto& [address, data] : items) {
        const auto written = m_onHandset.find(address);
        if (written != m_onHandset.end())
            data = written->second;
    }
    return items;
}

const NvImage& SimulatedHandset::lastRead(const QString& command) const
{
    if (!m_lastRead)
        throw TessalyError(errNothingRead, QStringLiteral("%1 needs the values of an NV Read first").arg(command));
    return *m_lastRead;
}

// The items that may be written: not lacking on the handset, not protected
// by the catalogue.
NvImage SimulatedHandset::writable(const NvImage& items) const
{
    NvImage kept;
    for (const auto& [address, data] : items)
        if (!m_lacking.count(address) && m_catalogue.protection(address.item).isEmpty())
            kept.emplace(address, data);
    return kept;
}

// Writes the items one by one as sub-process 1, then has the memory keep
// them as its last step. An item that fails ends the run; the fault tells
// which changed items were written and verified before it and which were not.
void SimulatedHandset::writeItems(const NvImage& items, const QString& name)
{
    std::vector<NvAddress> written;
    std::vector<NvAddress> pending;
    for (const auto& [address, data] : items) {
        const auto known = m_onHandset.find(address);
        if (known == m_onHandset.end() || known->second != data)
            pending.push_back(address);
    }
    auto next = items.begin();
    try {
        subProcess(1, name, int32_t(items.size()) + 1, [&](int32_t) {
            if (next == items.end()) {
                m_current.reset();
                m_memory.commit();
                return;
            }
            m_current = next->first;
            transfer();
            const NvStatus status = m_memory.write(next->first, next->second);
            if (status != NvStatus::Done)
                throw TessalyError(errItemUnwritable,
                                   QStringLiteral("the handset answered with status %1").arg(int(status)));
            if (m_onHandset[next->first] != next->second) {
                m_onHandset[next->first] = next->second;
                written.push_back(next->first);
                pending.erase(std::find(pending.begin(), pending.end(), next->first));
            }
            ++next;
        });
    } catch (const TessalyError& fault) {
        if (!m_current)
            throw; // the save: the memory keeps what it held before
        m_onHandset.erase(*m_current); // old or new bytes: read again to know
        try {
            m_memory.commit();
        } catch (const TessalyError&) {
            written.clear(); // nothing of this run was kept
        }
        QString what = fault.description();
        if (what.endsWith(QLatin1Char('.')))
            what.chop(1);
        throw TessalyError(fault.number(), QStringLiteral("%1.\nWritten and verified before it: %2.\nNot written: %3.")
                                               .arg(what, Listed(written), Listed(pending)));
    }
}

// Fills the panel from the last read as sub-process `number`: first the
// basic information and the profile selection, then one page a step.
void SimulatedHandset::fillPanel(int32_t number, const NvImage& items)
{
    const NvImage& read = items;
    const auto value = [&](const Field& field) {
        return m_lacking.count(field.address(0)) ? QString() : Decode(field, read.at(field.address(0)));
    };
    const std::vector<Sheet>& sheets = m_catalogue.sheets();
    subProcess(number, QStringLiteral("Filling pages"), int32_t(sheets.size()) + 1, [&](int32_t i) {
        if (i > 0) {
            fillSheet(sheets[size_t(i - 1)], items);
            return;
        }
        const std::array<Field, 6>& basic = m_catalogue.basicInformation();
        const QString software = m_softwareVersion.isEmpty() ? value(basic[0]) : m_softwareVersion;
        m_panel->SetBasicInfo(software, value(basic[1]), value(basic[2]), value(basic[3]), value(basic[4]),
                             value(basic[5]));
        // The panel takes 1 to 6 profiles, numbered from 0.
        m_panel->SetProfileCount(int16_t(std::clamp(value(m_catalogue.profileCount()).toInt(), 1, 6)));
        m_panel->SetActiveProfileIndex(int16_t(std::clamp(value(m_catalogue.activeProfile()).toInt(), 0, 5)));
    });
}

} // namespace tessaly::model
