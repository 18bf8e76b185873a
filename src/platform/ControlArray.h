// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A control array: controls of one kind that share a name and are told apart
// by an index. Elements can be loaded and unloaded at run time; a loaded
// element copies the properties of the lowest element and starts hidden.
#pragma once

#include "platform/RuntimeError.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace tessaly {

template <class Control>
class ControlArray {
public:
    explicit ControlArray(QString name)
        : m_name(std::move(name))
    {
    }
    ControlArray(const ControlArray&) = delete;
    ControlArray& operator=(const ControlArray&) = delete;

    const QString& Name() const { return m_name; }

    Control* operator()(int index) const
    {
        if (!exists(index))
            Raise(errArrayElementMissing,
                  QStringLiteral("Control array element '%1' doesn't exist").arg(index));
        return m_elements[size_t(index)];
    }

    bool exists(int index) const
    {
        return index >= 0 && size_t(index) < m_elements.size() && m_elements[size_t(index)];
    }

    // Takes in an element made by the layout.
    void Adopt(int index, Control* element)
    {
        element->setObjectName(elementName(index));
        place(index, element);
    }

    // The events of every element, present and loaded later, go to the
    // array's handlers with the element's index: `wire` connects them.
    void WireEvents(std::function<void(Control&, int16_t)> wire)
    {
        m_wire = std::move(wire);
        for (size_t i = 0; i < m_elements.size(); ++i)
            if (m_elements[i])
                m_wire(*m_elements[i], int16_t(i));
    }

    void Load(int index)
    {
        if (exists(index))
            Raise(errObjectAlreadyLoaded, QStringLiteral("Object already loaded"));
        const Control* model = lowest();
        if (!model || index < 0)
            Raise(errArrayElementMissing,
                  QStringLiteral("Control array element '%1' doesn't exist").arg(index));
        auto* element = new Control(model->parentWidget());
        element->setObjectName(elementName(index));
        element->CopyFrom(*model);
        element->hide();
        place(index, element);
    }

    void Unload(int index)
    {
        Control* element = (*this)(index);
        m_elements[size_t(index)] = nullptr;
        while (!m_elements.empty() && !m_elements.back())
            m_elements.pop_back();
        delete element;
    }

    // Highest index in use, or -1 when the array is empty.
    int UBound() const { return int(m_elements.size()) - 1; }

private:
    QString elementName(int index) const { return m_name + QLatin1Char('(') + QString::number(index) + QLatin1Char(')'); }

    const Control* lowest() const
    {
        for (const Control* element : m_elements)
            if (element)
                return element;
        return nullptr;
    }

    void place(int index, Control* element)
    {
        if (size_t(index) >= m_elements.size())
            m_elements.resize(size_t(index) + 1, nullptr);
        m_elements[size_t(index)] = element;
        if (m_wire)
            m_wire(*element, int16_t(index));
    }

    QString m_name;
    std::vector<Control*> m_elements;
    std::function<void(Control&, int16_t)> m_wire;
};

} // namespace tessaly
