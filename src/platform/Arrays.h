// The platform's dynamic arrays, with lower bound 0 and an upper bound per
// dimension. An index outside the bounds is a run-time error, and resizing
// can keep the elements whose indexes still fit.
#pragma once

#include "platform/RuntimeError.h"

#include <algorithm>
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

// Two dimensions, indexes (0..UBound(1), 0..UBound(2)). It starts, and can go
// back to, a single element at index 0 of one dimension: the mark of a store
// that has not been sized yet. Such an array takes no two-index access.
template <class T>
class Array2D {
public:
    Array2D() { ReDimSingle(); }

    bool IsSingle() const { return m_upper2 < 0; }

    int UBound(int dimension) const
    {
        if (dimension == 1)
            return m_upper1;
        if (dimension == 2 && !IsSingle())
            return m_upper2;
        RaiseSubscript();
    }

    T& operator()(int first, int second)
    {
        if (IsSingle() || first < 0 || first > m_upper1 || second < 0 || second > m_upper2)
            RaiseSubscript();
        return m_items[size_t(first) * size_t(m_upper2 + 1) + size_t(second)];
    }
    const T& operator()(int first, int second) const { return const_cast<Array2D&>(*this)(first, second); }

    void ReDimSingle()
    {
        m_items.assign(1, T{});
        m_upper1 = 0;
        m_upper2 = -1;
    }

    // New bounds, every element empty.
    void ReDim(int upper1, int upper2)
    {
        m_items.assign(size_t(upper1 + 1) * size_t(upper2 + 1), T{});
        m_upper1 = upper1;
        m_upper2 = upper2;
    }

    // New bounds, keeping each element whose two indexes still fit.
    void ReDimKeep(int upper1, int upper2)
    {
        Array2D old = std::move(*this);
        ReDim(upper1, upper2);
        if (old.IsSingle())
            return;
        const int rows = std::min(upper1, old.m_upper1);
        const int cols = std::min(upper2, old.m_upper2);
        for (int i = 0; i <= rows; ++i)
            for (int j = 0; j <= cols; ++j)
                (*this)(i, j) = std::move(old(i, j));
    }

private:
    std::vector<T> m_items;
    int m_upper1 = 0;
    int m_upper2 = -1;
};

} // namespace tessaly
