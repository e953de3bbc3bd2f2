// Creating a complete home: data.mdb with schema and master data, tarnvel.ini, default.xml, report
// bitmaps and the working folders; with demo, also sample forms and an evaluation result file.
#pragma once

#include <QString>

// Number of the error raised when a home already has a data.mdb and force is not given.
inline constexpr int HomeExistsError = 58;

// Creates (or with force re-creates) the home in folder and makes it the current home. Files the
// operator may have edited (tarnvel.ini, default.xml) are kept unless force. Throws VeridonError,
// number HomeExistsError, when data.mdb exists and force is false; other VeridonErrors when a file
// cannot be written or master data do not fit the schema.
void initHome(const QString& folder, bool demo, bool force);

// The working folders a new home gets, relative to the home.
QStringList homeWorkingFolders();
