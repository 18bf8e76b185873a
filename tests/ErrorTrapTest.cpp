// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The one error report: its line, its box, and how far an error travels.
#include "frame/ReportError.h"
#include "platform/Numeric.h"
#include "support/DialogAnswerer.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace tessaly;

TEST(ErrorTrap, ReportLineCarriesLabelsNumberAndDescriptionOfAnyFailure)
{
    DialogAnswerer answerer;
    OnErrorReport("Event_Function", "events_StepIt", [] { ToInt16(40000); });
    OnErrorReport("Interface", "GetAkey", [] { throw std::runtime_error("port closed"); });
    OnErrorReport("Interface", "GetAkey", [] { throw std::bad_alloc(); });
    OnErrorReport("Interface", "GetAkey", [] { throw 42; });
    EXPECT_EQ(answerer.texts(), QStringList({"Error[Event_Function/events_StepIt]:6\tOverflow\t",
                                             "Error[Interface/GetAkey]:440\tport closed\t",
                                             "Error[Interface/GetAkey]:7\tOut of memory\t",
                                             "Error[Interface/GetAkey]:51\tInternal error\t"}));
    EXPECT_EQ(answerer.seen()[0].icon, QMessageBox::NoIcon);
    // The handler ends the error: nothing is current afterwards.
    EXPECT_EQ(Err().Number, 0);
}

TEST(ErrorTrap, ErrorEndsTheRoutineAndItsCallerGoesOn)
{
    DialogAnswerer answerer;
    QStringList steps;
    OnErrorReport("Event_Function", "Outer", [&] {
        steps << "outer starts";
        // An inner routine with a handler keeps its error to itself.
        OnErrorReport("Common_Function", "Inner", [&] {
            steps << "inner starts";
            Raise(errSubscriptOutOfRange, QStringLiteral("Subscript out of range"));
            steps << "inner goes on"; // never runs
        });
        steps << "outer goes on";
        // A routine without a handler hands its error to the nearest caller that has one.
        const auto withoutHandler = [] { Raise(errGridInvalidRow, QStringLiteral("Invalid Row value")); };
        withoutHandler();
        steps << "outer after the error"; // never runs
    });
    EXPECT_EQ(steps, QStringList({"outer starts", "inner starts", "outer goes on"}));
    EXPECT_EQ(answerer.texts(), QStringList({"Error[Common_Function/Inner]:9\tSubscript out of range\t",
                                             "Error[Event_Function/Outer]:30009\tInvalid Row value\t"}));
}
