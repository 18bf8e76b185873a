# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# tessaly_add_skin(target): draws the skin's bitmaps at build time with the
# tessaly_skinart program and embeds them into `target` as the resources
# :/tessaly/skin/<name>.png and :/tessaly/skin/<name>@2x.png.
function(tessaly_add_skin target)
    set(names
        Tessaly imageBasicInfo2 imgMIPProfile
        imageMinize imageMinimizeSel imageClose imageCloseSel
        imageReadIdle imageReadOver imageReadSel imageReadDim
        imageWriteIdle imageWriteOver imageWriteSel imageWriteDim
        imageExitIdle imageExitOver imageExitSel imageExitDim
        imageUndoIdle imageUndoOver imageUndoSel imageUndoDim
        pbProgress pbProgressBg
        frmMsgBox imgBtnOK0 imgBtnOK1 Image1)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/skin)
    set(files)
    foreach(name IN LISTS names)
        list(APPEND files ${folder}/${name}.png ${folder}/${name}@2x.png)
    endforeach()
    add_custom_command(OUTPUT ${files}
        COMMAND tessaly_skinart ${folder}
        DEPENDS tessaly_skinart
        COMMENT "Drawing the skin's bitmaps"
        VERBATIM)
    qt_add_resources(${target} tessaly_skin PREFIX /tessaly/skin BASE ${folder} FILES ${files})
endfunction()
