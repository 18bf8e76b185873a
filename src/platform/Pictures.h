// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The two picture controls of the forms platform, each in its own header:
// the picture box, a drawing surface, and the image, which only shows its
// picture.
#pragma once

#include "platform/Image.h"
#include "platform/PictureBox.h"
