// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "DeviceWatch.h"

#include "link/EmulatorAnnouncement.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSocketNotifier>
#include <QTimer>

#include <libudev.h>

#include <set>

namespace halvane {

using tessaly::link::SerialPortEntry;

namespace {

// Long enough to gather the events of one device plugged in (its node, its
// links, its interfaces), short enough to show it well within 2 seconds.
constexpr int SettleMs = 200;

// udev's monitor of the tty subsystem: the events udev sends once its rules
// have run, so that the device node is there when they come.
class UdevMonitor {
public:
    UdevMonitor()
        : m_udev(udev_new())
    {
        if (!m_udev)
            return;
        m_monitor = udev_monitor_new_from_netlink(m_udev, "udev");
        if (!m_monitor || udev_monitor_filter_add_match_subsystem_devtype(m_monitor, "tty", nullptr) < 0
            || udev_monitor_enable_receiving(m_monitor) < 0) {
            release();
        }
    }
    ~UdevMonitor() { release(); }
    UdevMonitor(const UdevMonitor&) = delete;
    UdevMonitor& operator=(const UdevMonitor&) = delete;

    // The monitor's socket, or -1 when it could not be made.
    int socket() const { return m_monitor ? udev_monitor_get_fd(m_monitor) : -1; }
    // Takes every event waiting; the listing that follows tells what they did.
    void drain()
    {
        while (udev_device* device = udev_monitor_receive_device(m_monitor))
            udev_device_unref(device);
    }

private:
    void release()
    {
        if (m_monitor)
            udev_monitor_unref(m_monitor);
        if (m_udev)
            udev_unref(m_udev);
        m_monitor = nullptr;
        m_udev = nullptr;
    }

    udev* m_udev = nullptr;
    udev_monitor* m_monitor = nullptr;
};

} // namespace

struct DeviceWatch::Private {
    Lister lister;
    std::vector<SerialPortEntry> ports;
    QTimer settle;
    QFileSystemWatcher folders;
    std::unique_ptr<UdevMonitor> udev;
    std::unique_ptr<QSocketNotifier> notifier;
    QString announcements = tessaly::link::EmulatorAnnouncementFolder();

    // The announcement folder is watched once it is there; until then its
    // parent is, to see it made.
    void watchAnnouncements()
    {
        if (QFileInfo::exists(announcements)) {
            if (!folders.directories().contains(announcements))
                folders.addPath(announcements);
        } else if (const QString parent = QFileInfo(announcements).path(); QFileInfo::exists(parent)) {
            if (!folders.directories().contains(parent))
                folders.addPath(parent);
        }
    }
};

DeviceWatch::DeviceWatch(Lister lister, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->lister = std::move(lister);
    d->ports = d->lister();
    d->settle.setSingleShot(true);
    d->settle.setInterval(SettleMs);
    // A change already waiting is not put off by the next one.
    const auto schedule = [this] {
        if (!d->settle.isActive())
            d->settle.start();
    };
    const QString root = tessaly::link::SystemRoot();
    if (QFileInfo::exists(QDir::cleanPath(root + QStringLiteral("/run/udev/control")))) {
        d->udev = std::make_unique<UdevMonitor>();
        if (d->udev->socket() < 0) {
            d->udev.reset();
        } else {
            d->notifier = std::make_unique<QSocketNotifier>(d->udev->socket(), QSocketNotifier::Read);
            connect(d->notifier.get(), &QSocketNotifier::activated, this, [this, schedule] {
                d->udev->drain();
                schedule();
            });
        }
    }
    if (!d->udev)
        d->folders.addPath(QDir::cleanPath(root + QStringLiteral("/dev")));
    d->watchAnnouncements();
    connect(&d->folders, &QFileSystemWatcher::directoryChanged, this, [this, schedule] {
        d->watchAnnouncements();
        schedule();
    });
    connect(&d->settle, &QTimer::timeout, this, [this] {
        std::vector<SerialPortEntry> now = d->lister();
        std::set<QString> before;
        for (const SerialPortEntry& port : d->ports)
            before.insert(port.device);
        std::vector<SerialPortEntry> appeared;
        for (const SerialPortEntry& port : now)
            if (before.erase(port.device) == 0)
                appeared.push_back(port);
        QStringList gone;
        for (const QString& device : before)
            gone << device;
        d->ports = std::move(now);
        if (!appeared.empty() || !gone.isEmpty())
            emit changed(appeared, gone);
    });
}

DeviceWatch::~DeviceWatch() = default;

const std::vector<SerialPortEntry>& DeviceWatch::ports() const
{
    return d->ports;
}

bool DeviceWatch::usesUdev() const
{
    return d->udev != nullptr;
}

} // namespace halvane
