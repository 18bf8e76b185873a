// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Answers the modal dialogs that the code under test opens, the way a user
// would press OK, and records what each one said. While no answerer is alive,
// a dialog that opens fails the running test and is closed all the same, so
// that no test can hang on a box nobody answers.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QDialog;

struct SeenDialog {
    QString objectName;
    QString text; // a message box's text
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

class DialogAnswerer {
public:
    DialogAnswerer();
    ~DialogAnswerer();
    DialogAnswerer(const DialogAnswerer&) = delete;
    DialogAnswerer& operator=(const DialogAnswerer&) = delete;

    const QList<SeenDialog>& seen() const { return m_seen; }
    // Instead of pressing OK, the next dialogs get this answer, from their
    // own event loop.
    std::function<void(QDialog&)> answer;
    QStringList texts() const;

    // Installed once per test binary, by main.
    static void InstallGuard();
    // A dialog with this property set is left to the test that drives it.
    static constexpr const char* DrivenByTest = "drivenByTest";

private:
    friend class DialogGuard;
    QList<SeenDialog> m_seen;
};
