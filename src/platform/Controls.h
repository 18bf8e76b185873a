// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The intrinsic controls of the forms platform, each a standard Qt widget with
// the twips geometry of FormControl and each in its own header: frames,
// labels, text boxes, combo boxes, option buttons and shapes; the picture
// controls are in Pictures.h.
#pragma once

#include "platform/ComboBox.h"
#include "platform/ControlColors.h"
#include "platform/Frame.h"
#include "platform/Label.h"
#include "platform/OptionButton.h"
#include "platform/Shape.h"
#include "platform/TextBox.h"
