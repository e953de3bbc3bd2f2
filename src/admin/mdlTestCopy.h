// SPDX-License-Identifier: Apache-2.0
// Putting a form aside for testing: the scanned image of the record on screen is copied into the
// test folder (APP_TestBildpfad) and a note file with the operator's remark is written beside it,
// so that the people who tune the evaluation get the badly read form together with the reason.
// The record itself is not touched.
#pragma once

#include <QString>

enum class TestCopyResult {
    Done,       // image copied, note written, "Msg_ToTestDone" shown
    NoImage,    // no name, or no such file: "Msg_NoImagefile" shown
    NoTestPath, // no test folder: "Msg_NoTestPath" shown
    Failed,     // copy or note failed: reported as "actionBelegZumTest()"
};

// Where the image of imageName is read from: a name with "/" or "\" is taken as a path (its folder
// and its last part), a bare name lies in the image folder APP_Bildpfad.
struct TestCopySource {
    QString folder;   // ends in "/" (or is empty when APP_Bildpfad is unset)
    QString fileName; // the part after the last separator
};
TestCopySource testCopySource(const QString& imageName);

// The test folder as the copy uses it: APP_TestBildpfad with "/" appended when it does not end in
// one. An unset setting therefore gives "/", the root folder; this is kept deliberately, so the
// completed text is never empty in practice.
QString testCopyFolder();

// Copies the image named imageName into the test folder (replacing a file of that name) and writes
// note, followed by a line break, into "<base name>.txt" there (Windows-1252, CR LF). Shows
// "Msg_NoImagefile" when the name is empty or the image does not exist, "Msg_NoTestPath" when the
// test folder is empty and "Msg_ToTestDone" with the copied file's path on success. A copy or write
// that fails (no such test folder, no right to write) is reported as run-time error
// "actionBelegZumTest()"; a note is never written without its image.
TestCopyResult BelegZumTest(const QString& imageName, const QString& note);
