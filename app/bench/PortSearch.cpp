// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "PortSearch.h"

#include <QThread>

#include <algorithm>
#include <set>

namespace halvane {

struct PortSearch::Private {
    std::chrono::milliseconds within;
    std::vector<QThread*> threads;
    std::multiset<QString> nodes; // under search
};

PortSearch::PortSearch(std::chrono::milliseconds within, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->within = within;
}

PortSearch::~PortSearch()
{
    for (QThread* thread : d->threads) {
        thread->wait();
        delete thread;
    }
}

void PortSearch::search(const std::vector<PortToProbe>& ports)
{
    if (ports.empty())
        return;
    std::vector<QString> nodes;
    for (const PortToProbe& port : ports) {
        nodes.push_back(port.node);
        d->nodes.insert(port.node);
    }
    // Written by the thread before it finishes, read here after.
    auto results = std::make_shared<std::vector<tessaly::link::ProbeResult>>();
    QThread* thread = QThread::create(
        [results, nodes, within = d->within] { *results = tessaly::link::ProbePorts(nodes, within); });
    d->threads.push_back(thread);
    connect(thread, &QThread::finished, this, [this, thread, ports, results] {
        for (const PortToProbe& port : ports)
            d->nodes.erase(d->nodes.find(port.node));
        d->threads.erase(std::find(d->threads.begin(), d->threads.end(), thread));
        thread->deleteLater();
        emit probed(ports, *results);
    });
    thread->start();
}

bool PortSearch::searching(const QString& node) const
{
    return d->nodes.count(node) > 0;
}

bool PortSearch::idle() const
{
    return d->threads.empty();
}

} // namespace halvane
