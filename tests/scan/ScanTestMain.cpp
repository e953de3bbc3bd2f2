// SPDX-License-Identifier: Apache-2.0
// The scan tests wait for the evaluation program in an event loop, which needs an application
// object; no display is involved.
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
