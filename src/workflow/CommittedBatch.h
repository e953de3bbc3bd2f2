// SPDX-License-Identifier: Apache-2.0
// Batch work that keeps what it did: the body runs in one transaction (fast, and a crash leaves the
// database as before), and when the body fails the rows written so far are committed before the
// failure goes on to be reported, as every reported failure keeps the earlier changes.
#pragma once

#include "app/Database.h"

#include <exception>

template <class Body> void runCommittingBatch(Body&& body) {
    Transaction transaction;
    try {
        body();
    } catch (const std::exception&) {
        try {
            transaction.commit();
        } catch (const std::exception&) {
            // The body's failure is the one to report; the rollback in the destructor follows.
        }
        throw;
    }
    transaction.commit();
}
