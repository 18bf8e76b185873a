// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "support/DialogAnswerer.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>

#include <gtest/gtest.h>

namespace {
DialogAnswerer* s_current = nullptr;
}

class DialogGuard : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (event->type() != QEvent::Show || !dialog || !dialog->isModal()
            || dialog->property(DialogAnswerer::DrivenByTest).toBool())
            return false;
        SeenDialog seen{dialog->objectName(), {}, QMessageBox::NoIcon};
        if (auto* box = qobject_cast<QMessageBox*>(dialog)) {
            seen.text = box->text();
            seen.icon = box->icon();
        }
        if (!s_current)
            ADD_FAILURE() << "Unexpected dialog: " << qPrintable(seen.text) << " " << qPrintable(seen.objectName);
        else
            s_current->m_seen.append(seen);
        if (s_current && s_current->answer) {
            QMetaObject::invokeMethod(dialog, [dialog, answer = s_current->answer] { answer(*dialog); },
                                      Qt::QueuedConnection);
            return false;
        }
        // Closed from the dialog's own event loop, as a click on OK would;
        // then the window that was active before is active again, as a
        // window manager makes it (the offscreen platform does not).
        QMetaObject::invokeMethod(
            dialog,
            [dialog, before = QPointer<QWidget>(QApplication::activeWindow())] {
                dialog->done(QDialog::Accepted);
                if (before && before != dialog) {
                    before->activateWindow();
                    QCoreApplication::processEvents();
                }
            },
            Qt::QueuedConnection);
        return false;
    }
};

DialogAnswerer::DialogAnswerer()
{
    EXPECT_EQ(s_current, nullptr) << "one answerer at a time";
    s_current = this;
}

DialogAnswerer::~DialogAnswerer()
{
    s_current = nullptr;
}

QStringList DialogAnswerer::texts() const
{
    QStringList texts;
    for (const SeenDialog& dialog : m_seen)
        texts << dialog.text;
    return texts;
}

void DialogAnswerer::InstallGuard()
{
    static DialogGuard guard;
    qApp->installEventFilter(&guard);
}
