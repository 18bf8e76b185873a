// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/RuntimeError.h"

#include <new>
#include <utility>

namespace tessaly {

RuntimeError::RuntimeError(int32_t number, QString description)
    : m_number(number)
    , m_description(std::move(description))
{
}

void Raise(int32_t number, const QString& description)
{
    throw RuntimeError(number, description);
}

void ErrRecord::Clear()
{
    Number = 0;
    Description.clear();
}

void ErrRecord::Capture(std::exception_ptr error)
{
    try {
        std::rethrow_exception(std::move(error));
    } catch (const RuntimeError& e) {
        Number = e.number();
        Description = e.description();
    } catch (const std::bad_alloc&) {
        Number = errOutOfMemory;
        Description = QStringLiteral("Out of memory");
    } catch (const std::exception& e) {
        Number = errAutomation;
        Description = QString::fromLocal8Bit(e.what());
    } catch (...) {
        Number = errInternal;
        Description = QStringLiteral("Internal error");
    }
}

// One record: the panel lives on the GUI thread. A thread_local record
// would keep the library loaded after dlclose until the thread ends.
ErrRecord& Err()
{
    static ErrRecord record;
    return record;
}

} // namespace tessaly
