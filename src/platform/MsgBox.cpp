#include "platform/MsgBox.h"

#include <QApplication>
#include <QMessageBox>

namespace tessaly {

void MsgBox(const QString& prompt, MsgBoxStyle style)
{
    QMessageBox box(style == MsgBoxStyle::Critical ? QMessageBox::Critical : QMessageBox::NoIcon,
                    QApplication::applicationName(), prompt, QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace tessaly
