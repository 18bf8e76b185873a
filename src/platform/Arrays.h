// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The platform's dynamic array, with lower bound 0 and an upper bound. An
// index outside the bounds is a run-time error, and resizing keeps the
// elements whose indexes still fit.
#pragma once

#include "platform/RuntimeError.h"

#include <cstddef>
#include <vector>

namespace tessaly {

[[noreturn]] inline void RaiseSubscript()
{
    Raise(errSubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

// One dimension, indexes 0 to UBound().
template <class T>
class Array1D {
public:
    Array1D() : m_items(1) {}

    int UBound() const { return int(m_items.size()) - 1; }

    T& operator()(int index)
    {
        if (index < 0 || index > UBound())
            RaiseSubscript();
        return m_items[size_t(index)];
    }
    const T& operator()(int index) const { return const_cast<Array1D&>(*this)(index); }

    // Sets the upper bound; elements that still fit keep their values.
    void ReDimPreserve(int upperBound) { m_items.resize(size_t(upperBound) + 1); }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    std::vector<T> m_items;
};

} // namespace tessaly
