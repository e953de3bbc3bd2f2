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

// Folder of the installed master data (data/ of the source tree unless $VERIDON_DATA says otherwise).
QString masterDataDir();
