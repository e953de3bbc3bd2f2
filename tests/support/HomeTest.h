// SPDX-License-Identifier: Apache-2.0
// Base fixture for tests on a home: a fresh home with master data, a scripted presenter and a clock
// fixed at Sunday 15 November 2026, 10:30.
#pragma once

#include "ScriptedPresenter.h"
#include "TempHome.h"
#include "app/Clock.h"

#include <gtest/gtest.h>
#include <memory>

class HomeTest : public ::testing::Test {
protected:
    explicit HomeTest(TempHome::Content content = TempHome::Content::MasterData)
        : clock(QDateTime(QDate(2026, 11, 15), QTime(10, 30, 0))), home(content) {
        setAppClock(&clock);
    }
    ~HomeTest() override { setAppClock(nullptr); }

    FixedClock clock;
    ScriptedPresenter messages;
    TempHome home;
};
