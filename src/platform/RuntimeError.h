// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Run-time errors of the forms platform: a number and a description, thrown by
// the controls and arrays, and the record of the current
// error that the panel's error report reads.
#pragma once

#include <QString>

#include <cstdint>
#include <exception>

namespace tessaly {

// Error numbers raised by the platform layer.
enum ErrorNumber : int32_t {
    errInvalidProcedureCall = 5,
    errOverflow = 6,
    errOutOfMemory = 7,
    errSubscriptOutOfRange = 9,
    errInternal = 51,
    errAutomation = 440,
    errArrayElementMissing = 340,
    errObjectAlreadyLoaded = 360,
    errInvalidPropertyValue = 380,
    errGridInvalidRow = 30009,
    errGridInvalidCol = 30010,
    errGridTooManyCells = 30006,
};

class RuntimeError : public std::exception {
public:
    RuntimeError(int32_t number, QString description);

    int32_t number() const noexcept { return m_number; }
    const QString& description() const noexcept { return m_description; }
    const char* what() const noexcept override { return "tessaly::RuntimeError"; }

private:
    int32_t m_number;
    QString m_description;
};

// Throws a RuntimeError with the given number and description.
[[noreturn]] void Raise(int32_t number, const QString& description);

// The current error, as a handler sees it.
struct ErrRecord {
    int32_t Number = 0;
    QString Description;

    void Clear();
    // Makes `error` the current error: a RuntimeError with its number, any
    // other exception as the automation error its text names. The layers
    // above record their own error types first (frame/ReportError.h).
    void Capture(std::exception_ptr error);
};

ErrRecord& Err();

} // namespace tessaly
