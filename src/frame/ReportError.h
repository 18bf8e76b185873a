// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The panel's one error report, and the handler that every routine with one
// puts around its body: an error anywhere inside becomes the current error,
// is reported under the routine's two labels, and the routine ends there.
// Its caller goes on as if the routine had finished.
#pragma once

#include "platform/RuntimeError.h"

#include <QString>

#include <exception>
#include <utility>

namespace tessaly {

// Shows "Error[group/routine]:number<TAB>description<TAB>" for the current
// error in the standard message box; nothing when there is no current error.
void ReportError(const QString& strGroup, const QString& strRoutine);

// The report line for the current error.
QString ErrorReportLine(const QString& strGroup, const QString& strRoutine);

// Makes `error` the current error: a TessalyError (a model's failure, or a
// host method's) with its number and description, anything else as the
// platform records it.
void CaptureError(std::exception_ptr error);

template <class Body>
void OnErrorReport(const char* group, const char* routine, Body&& body) noexcept
{
    try {
        std::forward<Body>(body)();
    } catch (...) {
        CaptureError(std::current_exception());
        ReportError(QLatin1String(group), QLatin1String(routine));
        Err().Clear();
    }
}

} // namespace tessaly
