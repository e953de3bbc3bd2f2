// SPDX-License-Identifier: Apache-2.0
// The program folder ("home"): the workspace holding data.mdb, tarnvel.ini, default.xml, the message
// log, report bitmaps and master-data files. Chosen by --home, else $VERIDON_HOME, else the folder of
// the executable.
#pragma once

#include <QString>

// Resolves the home from an explicit folder (may be empty), the environment and the executable's
// folder, in that order, and makes it the home of this process. Returns the chosen folder.
QString resolveHome(const QString& explicitHome);

// Sets the home directly (tests, tools). Closes this thread's database connection so that the next
// access opens the new home's data.mdb.
void setHome(const QString& folder);

// The home folder, always ending in "/".
QString homeDir();

// A path inside the home.
QString homePath(const QString& fileName);

// Appends "/" to a folder path that does not end in one; an empty path stays empty.
QString withTrailingSlash(const QString& folder);

// Folder of the master data, templates and demo files that `init` installs: $VERIDON_DATA when set,
// else masterDataDirFor() the running program's folder.
QString masterDataDir();

// The data folder for a program in programDir: the installed one beside it (<prefix>/bin ->
// <prefix>/share/veridon) when it is there; for a program inside the build tree the source tree's
// data/; otherwise the installed location, even when it is missing, so that an installed program
// never reads a source tree and its error names the folder it expected.
QString masterDataDirFor(const QString& programDir);
