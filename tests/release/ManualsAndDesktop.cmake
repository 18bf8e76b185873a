# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: BSD-3-Clause
#
# What a desktop reads of halvane: the menu entry and the metainfo pass their
# validators, and every option the programs' --help lists is in their manual
# pages and their bash completion, so an option added to a program and not
# to these is caught; a wrong option exits with the status they give for bad
# usage.
#   -DSOURCE_DIR -DMETAINFO -DHALVANE -DEMU
set(wrong "")
foreach(check "desktop-file-validate;${SOURCE_DIR}/data/halvane.desktop" "appstreamcli;validate;--no-net;${METAINFO}")
    list(GET check 0 tool)
    find_program(found_${tool} ${tool})
    if(NOT found_${tool})
        message("${tool} is not installed (scripts/deps installs it): not checked")
        continue()
    endif()
    execute_process(COMMAND ${check} RESULT_VARIABLE failed OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(failed)
        string(APPEND wrong "\n${check}:\n${output}")
    endif()
endforeach()

foreach(program halvane tessaly-emu)
    set(binary ${HALVANE})
    if(program STREQUAL "tessaly-emu")
        set(binary ${EMU})
    endif()
    execute_process(COMMAND env QT_QPA_PLATFORM=offscreen ${binary} --help OUTPUT_VARIABLE help)
    string(REGEX MATCHALL "\n +(-[a-zA-Z], )?--[a-z-]+" options "${help}")
    if(NOT options)
        string(APPEND wrong "\n${program} --help lists no options:\n${help}")
    endif()
    execute_process(COMMAND env QT_QPA_PLATFORM=offscreen ${binary} --no-such-option RESULT_VARIABLE status
        OUTPUT_QUIET ERROR_QUIET)
    if(NOT status EQUAL 2)
        string(APPEND wrong "\n${program} --no-such-option exits with ${status}, not 2 for bad usage")
    endif()
    file(READ ${SOURCE_DIR}/data/man/${program}.1 page)
    # The words the completion offers for an option being typed.
    file(READ ${SOURCE_DIR}/data/completion/${program} completion)
    string(REGEX MATCH "compgen -W '--[^']*'" completion "${completion}")
    foreach(option IN LISTS options)
        string(REGEX REPLACE ".*--" "" option "${option}")
        string(REPLACE "-" "\\\\-" roff "${option}")
        if(NOT page MATCHES "\\.TP\n\\.B[IR]?[^\n]*\\\\-\\\\-${roff}[ \"\n]")
            string(APPEND wrong "\n${program}(1) has no entry for --${option}")
        endif()
        if(NOT completion MATCHES "[ ']--${option}[ '\n]")
            string(APPEND wrong "\nthe bash completion of ${program} lacks --${option}")
        endif()
    endforeach()
endforeach()

if(wrong)
    message(FATAL_ERROR "${wrong}")
endif()
