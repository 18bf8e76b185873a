// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/ReportError.h"

#include "platform/MsgBox.h"

#include <tessaly/TessalyError.h>

namespace tessaly {

void CaptureError(std::exception_ptr error)
{
    try {
        std::rethrow_exception(std::move(error));
    } catch (const TessalyError& e) {
        Err().Number = e.number();
        Err().Description = e.description();
    } catch (...) {
        Err().Capture(std::current_exception());
    }
}

QString ErrorReportLine(const QString& strGroup, const QString& strRoutine)
{
    const ErrRecord& err = Err();
    return QStringLiteral("Error[") + strGroup + QLatin1Char('/') + strRoutine + QStringLiteral("]:")
        + QString::number(err.Number) + QLatin1Char('\t') + err.Description + QLatin1Char('\t');
}

void ReportError(const QString& strGroup, const QString& strRoutine)
{
    // A failure of the report itself is passed over: the failed routine still
    // ends normally.
    try {
        if (Err().Number == 0)
            return;
        MsgBox(ErrorReportLine(strGroup, strRoutine));
    } catch (...) {
    }
}

} // namespace tessaly
