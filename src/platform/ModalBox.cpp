#include "platform/ModalBox.h"

#include <QCoreApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <vector>

namespace tessaly {

namespace {

int g_openBoxes = 0;

std::vector<QPointer<QObject>>& Waiting()
{
    static std::vector<QPointer<QObject>> waiting;
    return waiting;
}

void DeleteWaiting()
{
    if (g_openBoxes > 0)
        return; // another box opened meanwhile: its closing calls again
    const std::vector<QPointer<QObject>> waiting = std::move(Waiting());
    Waiting().clear();
    for (const QPointer<QObject>& object : waiting)
        delete object.data();
}

} // namespace

int ShowModal(QDialog& dialog)
{
    ++g_openBoxes;
    const int result = dialog.exec();
    if (--g_openBoxes == 0 && !Waiting().empty())
        QTimer::singleShot(0, qApp, DeleteWaiting);
    return result;
}

bool ModalBoxOpen()
{
    return g_openBoxes > 0;
}

void DeleteAfterModalBoxes(QObject* object)
{
    static const bool deletedAtTheEnd = [] {
        qAddPostRoutine([] { g_openBoxes = 0; DeleteWaiting(); });
        return true;
    }();
    (void)deletedAtTheEnd;
    Waiting().push_back(object);
}

} // namespace tessaly
