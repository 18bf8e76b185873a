// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "frame/ReportError.h"

#include "platform/MsgBox.h"

namespace tessaly {

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
