# SPDX-FileCopyrightText: The Tessaly developers
# SPDX-License-Identifier: LGPL-2.1-or-later
#
# Writes the udev rule for the handsets' diagnostic interfaces from the list
# src/link/DiagInterfaces.txt: cmake -DLIST=... -DRULE=... -P UdevRule.cmake.
# For each interface the rule tells ModemManager to leave the port alone
# (ID_MM_PORT_IGNORE) and lets the user at the seat open it (uaccess), so that
# halvane needs neither root nor the dialout group.
file(STRINGS "${LIST}" lines)
set(rule "# 60-tessaly-handsets.rules: made from DiagInterfaces.txt by the Tessaly build.\n")
string(APPEND rule "# The diagnostic ports of the handsets halvane knows: ModemManager leaves\n")
string(APPEND rule "# them alone, and the user at the seat may open them.\n")
string(APPEND rule "ACTION==\"remove\", GOTO=\"tessaly_handsets_end\"\n")
string(APPEND rule "SUBSYSTEM!=\"tty\", GOTO=\"tessaly_handsets_end\"\n")
string(APPEND rule "SUBSYSTEMS==\"usb\", ATTRS{bInterfaceNumber}==\"?*\", ENV{.TESSALY_IFNUM}=\"\$attr{bInterfaceNumber}\"\n")
set(count 0)
foreach(line IN LISTS lines)
    string(REGEX REPLACE "#.*" "" line "${line}")
    string(STRIP "${line}" line)
    if(line STREQUAL "")
        continue()
    endif()
    if(NOT line MATCHES "^([0-9a-fA-F][0-9a-fA-F][0-9a-fA-F][0-9a-fA-F])[ \t]+([0-9a-fA-F][0-9a-fA-F][0-9a-fA-F][0-9a-fA-F])[ \t]+([0-9a-fA-F][0-9a-fA-F])[ \t]+(.+)$")
        message(FATAL_ERROR "${LIST}: not a diagnostic interface entry: ${line}")
    endif()
    string(TOLOWER "${CMAKE_MATCH_1}" vendor)
    string(TOLOWER "${CMAKE_MATCH_2}" product)
    string(TOLOWER "${CMAKE_MATCH_3}" interface)
    string(APPEND rule "# ${CMAKE_MATCH_4}\n")
    string(APPEND rule "SUBSYSTEMS==\"usb\", ATTRS{idVendor}==\"${vendor}\", ATTRS{idProduct}==\"${product}\", ENV{.TESSALY_IFNUM}==\"${interface}\", ENV{ID_MM_PORT_IGNORE}=\"1\", TAG+=\"uaccess\"\n")
    math(EXPR count "${count} + 1")
endforeach()
if(count EQUAL 0)
    message(FATAL_ERROR "${LIST} holds no interface")
endif()
string(APPEND rule "LABEL=\"tessaly_handsets_end\"\n")
file(WRITE "${RULE}" "${rule}")
