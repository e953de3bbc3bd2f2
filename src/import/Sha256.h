// SPDX-License-Identifier: Apache-2.0
// The SHA-256 of a whole file, the import file's identity. Reading and hashing a large import
// file cost an eighth of the import with Qt's portable code; where the processor has the SHA
// instructions the blocks go through them instead, and the result is the same digest.
#pragma once

#include <QByteArray>

class QIODevice;

// Reads device to its end and puts the SHA-256 of what it read (32 bytes) into digest. Returns
// false, leaving digest unchanged, when reading fails.
bool sha256Of(QIODevice& device, QByteArray& digest);
