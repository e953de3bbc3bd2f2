// SPDX-License-Identifier: Apache-2.0
// Where a record's scanned image lives. Records name their image by a bare file name (BMPName) that
// is looked up in the image folder; a name that already carries a folder, a drive or a list
// separator is treated as foreign and is never shown, copied into the folder or deleted from disk.
#pragma once

#include <QString>

// The image folder: APP_Bildpfad of zvbSys with "/" appended when missing; "" when unset.
QString GetBildpfad();

// True when name holds "\", "/", ",", ":" or "..", or is "." - a path or list rather than a bare file
// name. Such a name is never copied, moved or deleted: it could reach any file of the machine.
bool IsPathLikeImageName(const QString& name);

// The full path of the image named bmpName in the image folder; "" when bmpName is empty or
// path-like. Whether the file exists is left to the caller.
QString RecordImageFile(const QString& bmpName);

// The name of the copy kept when an image is discarded: "_d" before the last ".", or "_d." appended
// to a name without extension ("31901001.tif" -> "31901001_d.tif").
QString DiscardedImageName(const QString& bmpName);
