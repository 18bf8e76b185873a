// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "UnattendedDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <cstdio>

namespace halvane {

namespace {

QString KindOf(const QDialog& dialog)
{
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    switch (box ? box->icon() : QMessageBox::NoIcon) {
    case QMessageBox::Information: return QStringLiteral("information");
    case QMessageBox::Warning: return QStringLiteral("warning");
    case QMessageBox::Critical: return QStringLiteral("error");
    case QMessageBox::Question: return QStringLiteral("question");
    default: return QStringLiteral("message");
    }
}

// A message box's text; for another dialog, the text of its labels.
QString TextOf(const QDialog& dialog)
{
    if (const auto* box = qobject_cast<const QMessageBox*>(&dialog))
        return box->text();
    QStringList texts;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (!label->text().isEmpty() && label->objectName() != QLatin1String("lblTitle"))
            texts << label->text();
    return texts.join(QLatin1Char(' '));
}

void Answer(QDialog& dialog)
{
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    QAbstractButton* button = box ? box->defaultButton() : nullptr;
    if (!button && box && !box->buttons().isEmpty())
        button = box->buttons().first();
    if (button)
        button->click();
    else
        dialog.accept();
}

} // namespace

bool UnattendedDialogs::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show)
        return QObject::eventFilter(watched, event);
    auto* dialog = qobject_cast<QDialog*>(watched);
    // Only a modal dialog waits for an answer; one merely shown is halvane's own.
    if (dialog && dialog->isModal() && dialog->isWindow()) {
        std::fprintf(stderr, "halvane: %s: %s\n", qPrintable(KindOf(*dialog)), qPrintable(TextOf(*dialog)));
        std::fflush(stderr);
        m_seen.push_back({dialog->grab(), dialog->pos()});
        // From the dialog's own event loop, once it runs; then the window
        // that was active before is active again, as a window manager makes it.
        QTimer::singleShot(0, dialog, [dialog, before = QPointer<QWidget>(QApplication::activeWindow())] {
            Answer(*dialog);
            if (before && before != dialog)
                before->activateWindow();
        });
    }
    return QObject::eventFilter(watched, event);
}

} // namespace halvane
