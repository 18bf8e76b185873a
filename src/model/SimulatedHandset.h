// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A model that behaves like a CDMA handset on a serial port: its NV items
// live in an NV memory, the catalogue says where each value of the panel
// stands in them, and the three commands move the values between the memory
// and the panel through the panel's public methods.
//
// A fault of the handset or its line ends the command: the user is told once,
// in a box naming the command, the item and where the panel shows it, and
// the port, and the command returns as any other so that the panel's command
// bar comes back to rest. Items the handset lacks (see model::Lacks) never
// fail a read: their cells stay empty and read-only, they are never written,
// and one box at the end of the read lists them.
#pragma once

#include "model/NvFile.h"
#include "model/NvMemory.h"

#include <tessaly/BaseModel.h>

#include <QPointer>

#include <chrono>
#include <functional>
#include <optional>
#include <set>

class Tessaly;

namespace tessaly::model {

class Catalogue;
class ItemsPage;
class RoamingListPages;
class RoamingListSource;
struct Sheet;

// Where the NV Items page's list comes from after a read: given the items of
// the read, it gives every item the handset holds, telling its progress as
// items done of a total. Throws TessalyError when it cannot.
using ItemsSource = std::function<std::vector<NvEntry>(
    const NvImage& read, const std::function<void(size_t done, size_t total)>& progress)>;

class SimulatedHandset : public IBaseModel {
    Q_OBJECT
public:
    static constexpr int32_t Port = 7;

    SimulatedHandset(Tessaly& panel, NvMemory& memory, QObject* parent = nullptr);

    // The name and the port the panel's label shows; the simulated handset's
    // own at first.
    void setIdentity(QString name, QString port);
    // The software version that Basic Information shows, as the handset
    // itself tells it; none at first: the phone version NV item's.
    void setSoftwareVersion(QString version) { m_softwareVersion = std::move(version); }
    // The time that each NV item takes on the line, so that a person can
    // watch the progress; none at first. The windows keep painting meanwhile.
    void setPace(std::chrono::milliseconds perItem) { m_pace = perItem; }
    // A page of every item by number, the NV Items page, which each NV Read
    // fills from `source` (by default from the items of the read itself) and
    // each NV Write writes the edited rows of, with the same care as the
    // values of the other pages: never an item the catalogue protects nor one
    // the handset refuses, what the handset held read and kept first (a live
    // handset's memory keeps it as a backup), each read back. None at first.
    void setItemsPage(ItemsPage* page, ItemsSource source = {});
    // The pages of the handset's roaming list, which each NV Read fills from
    // `source` and each NV Write, when a cell of theirs changed, writes as a
    // new list through it (model::PutRoamingList: the list checked, the
    // handset's kept, the new one read back and compared). A cell that holds
    // no value of its field stops the write before anything is written.
    // None at first.
    void setRoamingListPages(RoamingListPages* pages, RoamingListSource* source);
    // Whether the last command did all its work.
    bool succeeded() const { return m_succeeded; }

    void NVRead() override;
    void GetModelName(QString& name) override;
    void GetPortNumber(QString& port) override;
    void NVWrite() override;
    void NVRestore() override;

private:
    void run(const QString& command, const std::function<void()>& work);
    void tell(bool fault, const QString& title, const QString& text);
    void transfer();
    void announce(int32_t process, int32_t steps);
    // One sub-process of so many steps; `step` does the work of each.
    template <class Step> void subProcess(int32_t number, const QString& name, int32_t steps, Step&& step);
    void fillPanel(int32_t number, const NvImage& items);
    void fillSheet(const Sheet& sheet, const NvImage& items);
    const NvImage& lastRead(const QString& command) const;
    // The items of the last read, with the bytes written since over them.
    NvImage known(const QString& command) const;
    NvImage valuesOfPanel() const;
    NvImage writable(const NvImage& items) const;
    void writeItems(const NvImage& items, const QString& name);
    QString where(NvAddress address) const;
    void tellLacking();
    void listItems(int32_t number);
    NvImage itemsEdited();
    void showWritten(const NvImage& items);
    void showRoamingList(int32_t number);
    std::optional<QByteArray> roamingListEdited() const;
    void writeRoamingList(int32_t number, const QByteArray& list);

    QPointer<Tessaly> m_panel;
    NvMemory& m_memory;
    const Catalogue& m_catalogue;
    QString m_name = QStringLiteral("Halvane SIM-800");
    QString m_port = QString::number(Port);
    QString m_softwareVersion;
    std::chrono::milliseconds m_pace{0};
    std::optional<NvImage> m_lastRead;
    std::map<NvAddress, NvStatus> m_lacking; // by the last read
    NvImage m_onHandset; // as far as reads and writes have shown
    std::optional<NvAddress> m_current; // the item on the line
    bool m_succeeded = true;
    ItemsPage* m_itemsPage = nullptr;
    ItemsSource m_itemsSource;
    RoamingListPages* m_roamingPages = nullptr;
    RoamingListSource* m_roamingSource = nullptr;
};

} // namespace tessaly::model
