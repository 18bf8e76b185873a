// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The records of the roaming list's tables, read and written field by field
// (model/Prl.h tells the two layouts). Private to the codec.
#pragma once

#include "model/BitFields.h"
#include "model/Prl.h"

namespace tessaly::model::prl {

// Whether the standard defines acquisition record `type` for `layout`: types
// 1 to 9 in both, the generic records 10 and 11 in the extended list alone.
bool KnownAcquisitionType(uint8_t type, PrlLayout layout);
// The type-specific fields of an acquisition record of a known type.
void ReadAcquisitionFields(BitReader& bits, PrlAcquisition& record);
void WriteAcquisitionFields(BitWriter& bits, const PrlAcquisition& record);

// A system record of the IS-683-A list.
void ReadStandardSystem(BitReader& bits, PrlSystem& record);
void WriteStandardSystem(BitWriter& bits, const PrlSystem& record);
// A system record of the extended list after its SYS_RECORD_LENGTH and
// SYS_RECORD_TYPE; false for a type it does not know, read no further.
bool ReadExtendedSystem(BitReader& bits, PrlSystem& record);
// A whole extended system record, its length worked out.
QByteArray ExtendedSystemRecord(const PrlSystem& record);

} // namespace tessaly::model::prl
