// SPDX-License-Identifier: Apache-2.0
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

// How a home joined to a shared pool came about.
struct PoolJoin {
    bool createdPool = false; // the server database was empty: its schema and master data were made
};

// Creates (or with force re-creates) the home in folder as a workstation of the shared pool at uri
// with workstation number workstation: data.mdb holds only the workstation's own tables, with
// APP_ServerDB = uri, APP_KorrID and Scan_RechnerId = workstation. When the server database has no
// pool yet, its schema and master data are created (and demo files installed with demo); several
// workstations joining at once create it once. Throws VeridonError (HomeExistsError as initHome;
// PoolUnreachableError when the server does not answer; the server's error otherwise).
PoolJoin initPoolHome(const QString& folder, const QString& uri, qint16 workstation, bool demo, bool force);
