// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The cells of the roaming list pages: the text each field of a system or an
// acquisition record shows, and the field read back from a cell the user
// edited. Each Read function sets the field and gives an empty string, or
// leaves it and says why the text is not such a value, in words that follow
// "the value ... of <place>". Pure functions, no panel.
#pragma once

#include "model/Prl.h"

#include <QString>
#include <QStringList>

namespace tessaly::model {

// The choices of the list cells.
QStringList PrlKindChoices();     // preferred, negative
QStringList PrlPriorityChoices(); // more, same
QStringList PrlRoamingChoices();  // TSB-58's common indicators: 0 (roaming), 1 (home), 2 (flashing)
QStringList PrlSystemChoices();   // the cellular A and B systems
QStringList PrlChannelChoices();  // primary, secondary, both

// "any" for the wildcard NID, "public" for the public system, else its number.
QString PrlNidText(const PrlSystem& system);
QString ReadPrlNid(const QString& text, PrlSystem& system);
QString ReadPrlSid(const QString& text, PrlSystem& system);
// "more" or "same"; "-" for a negative system, which has no priority.
QString PrlPriorityText(const PrlSystem& system);
// "1 (home)" for the common indicators, the number for others, "-" for none.
QString PrlRoamingText(std::optional<uint8_t> indicator);
QString ReadPrlRoaming(const QString& text, std::optional<uint8_t>& indicator);

// Whether the record is of a type the list's layout defines, its fields read.
bool PrlAcquisitionKnown(const PrlAcquisition& record, PrlLayout layout);
// "unknown (type N)" for a type the list's layout does not define.
QString PrlAcquisitionTypeText(uint8_t type, PrlLayout layout);
// Which of the record's fields its type has.
bool HasPrlSystem(uint8_t type);
bool HasPrlPrimarySecondary(uint8_t type);
bool HasPrlBlocks(uint8_t type);
bool HasPrlChannels(uint8_t type);
QString PrlSystemText(uint8_t system);
QString ReadPrlSystem(const QString& text, uint8_t& system);
QString PrlPrimarySecondaryText(uint8_t primarySecondary);
QString ReadPrlPrimarySecondary(const QString& text, uint8_t& primarySecondary);
// "A, B, F"; "any" for block 7.
QString PrlBlocksText(const std::vector<uint8_t>& blocks);
QString ReadPrlBlocks(const QString& text, std::vector<uint8_t>& blocks);
// "283, 384"; the generic records' as "band/channel": "1/25, 1/50".
QString PrlChannelsText(const PrlAcquisition& record);
QString ReadPrlChannels(const QString& text, PrlAcquisition& record);

} // namespace tessaly::model
