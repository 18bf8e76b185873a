// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// When no one is there to answer (no display, a screenshot, a script's
// --read or --restore-backup), every modal dialog that opens is written to
// standard error with its kind ("halvane: warning: ..."), and answered as its
// default button would be. Installed on the application, it sees the dialogs
// of the panel and of the handset alike, and keeps a picture of each for the
// screenshot.
#pragma once

#include <QObject>
#include <QPixmap>
#include <QPoint>

#include <vector>

namespace halvane {

class UnattendedDialogs : public QObject {
public:
    struct Seen {
        QPixmap picture;
        QPoint at; // on the screen
    };

    // The dialogs answered since the last clear().
    const std::vector<Seen>& seen() const { return m_seen; }
    void clear() { m_seen.clear(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<Seen> m_seen;
};

} // namespace halvane
