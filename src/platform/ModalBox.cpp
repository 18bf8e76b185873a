// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/ModalBox.h"

#include <QCoreApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <vector>

namespace tessaly {

namespace {

int g_openBoxes = 0;
bool g_deletePending = false; // a deletion queued on the event loop

void DeleteAtTheEnd();

// Deleted at the latest when the application ends. A library unloaded before
// that takes its routine back.
std::vector<QPointer<QObject>>& Waiting()
{
    struct Store {
        Store() { qAddPostRoutine(DeleteAtTheEnd); }
        ~Store() { qRemovePostRoutine(DeleteAtTheEnd); }
        std::vector<QPointer<QObject>> objects;
    };
    static Store store;
    return store.objects;
}

void DeleteWaiting()
{
    g_deletePending = false;
    if (g_openBoxes > 0)
        return; // another box opened meanwhile: its closing calls again
    const std::vector<QPointer<QObject>> waiting = std::move(Waiting());
    Waiting().clear();
    for (const QPointer<QObject>& object : waiting)
        delete object.data();
}

void DeleteAtTheEnd()
{
    g_openBoxes = 0;
    DeleteWaiting();
}

} // namespace

int ShowModal(QDialog& dialog)
{
    ++g_openBoxes;
    const int result = dialog.exec();
    if (--g_openBoxes == 0 && !Waiting().empty() && !g_deletePending) {
        g_deletePending = true;
        QTimer::singleShot(0, qApp, DeleteWaiting);
    }
    return result;
}

bool ModalBoxOpen()
{
    return g_openBoxes > 0;
}

bool ModalBoxesBusy()
{
    return g_openBoxes > 0 || g_deletePending || !Waiting().empty();
}

void DeleteAfterModalBoxes(QObject* object)
{
    Waiting().push_back(object);
}

} // namespace tessaly
