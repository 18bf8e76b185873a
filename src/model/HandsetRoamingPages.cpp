// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The simulated handset's side of the roaming list pages: the handset's list
// shown after a read, and the list edited on the pages written by NV Write
// with the checks of every roaming list write, then shown as the handset
// holds it.
#include "model/SimulatedHandset.h"

#include "model/RoamingListPages.h"
#include "model/RoamingListSource.h"

namespace tessaly::model {

void SimulatedHandset::setRoamingListPages(RoamingListPages* pages, RoamingListSource* source)
{
    m_roamingPages = pages;
    m_roamingSource = source;
}

// Shows the handset's list as sub-process `number`, of one step. A handset
// that cannot give its list (one without the roaming list commands) still
// gives its items: the pages stay empty, and the user is told why.
void SimulatedHandset::showRoamingList(int32_t number)
{
    emit SetSubProcessStep(number, 1, Port);
    emit GetSubTotalProgressCount(QStringLiteral("Reading the roaming list"), 1, Port);
    QString unread;
    try {
        m_roamingPages->show(m_roamingSource->read());
    } catch (const TessalyError& fault) {
        m_roamingPages->show({});
        unread = fault.description();
    }
    emit StepIt(Port);
    emit SetSubProcessStep(number, 2, Port);
    if (!unread.isEmpty())
        tell(false, QStringLiteral("NV Read"),
             QStringLiteral("The handset's roaming list could not be read: %1. Its pages stay empty.").arg(unread));
}

std::optional<QByteArray> SimulatedHandset::roamingListEdited() const
{
    if (!m_roamingPages || !m_roamingSource)
        return std::nullopt;
    return m_roamingPages->edited();
}

// Writes the edited list as sub-process `number`: the handset's list kept,
// the new one written, read back and compared, then shown as read back.
void SimulatedHandset::writeRoamingList(int32_t number, const QByteArray& list)
{
    emit SetSubProcessStep(number, 1, Port);
    emit GetSubTotalProgressCount(QStringLiteral("Writing the roaming list"), 1, Port);
    PutRoamingList(*m_roamingSource, list);
    m_roamingPages->show(m_roamingSource->read());
    emit StepIt(Port);
    emit SetSubProcessStep(number, 2, Port);
}

} // namespace tessaly::model
