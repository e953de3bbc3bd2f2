// SPDX-License-Identifier: Apache-2.0
#include "mdlTestCopy.h"

#include "app/Errors.h"
#include "app/Home.h"
#include "app/Settings.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "app/mdlMessages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// "Fehler beim Zugriff auf Pfad/Datei": the classic number for a file that exists but cannot be
// replaced or written.
constexpr int PathFileAccessError = 75;

qsizetype lastSeparator(const QString& name) {
    return qMax(name.lastIndexOf(QLatin1Char('/')), name.lastIndexOf(QLatin1Char('\\')));
}

bool sameFile(const QString& a, const QString& b) {
    const QString ca = QFileInfo(a).canonicalFilePath();
    return !ca.isEmpty() && ca == QFileInfo(b).canonicalFilePath();
}

void copyReplacing(const QString& source, const QString& target) {
    const QString folder = QFileInfo(target).absolutePath();
    if (!QFileInfo(folder).isDir())
        throw VeridonError(ErrorNumber::PathNotFound, Msg::ErrPathNotFound, {QDir::toNativeSeparators(folder)});
    // The test folder may be the image folder itself; removing the target would then lose the image.
    if (sameFile(source, target))
        return;
    QFile existing(target);
    if (existing.exists() && !existing.remove())
        throw VeridonError(PathFileAccessError, Msg::ErrCannotReplace, {target, existing.errorString()});
    QFile file(source);
    if (!file.copy(target))
        throw VeridonError(PathFileAccessError, Msg::ErrCannotCopy, {source, target, file.errorString()});
}

} // namespace

TestCopySource testCopySource(const QString& imageName) {
    const qsizetype separator = lastSeparator(imageName);
    if (separator >= 0)
        return {imageName.left(separator) + QLatin1Char('/'), imageName.mid(separator + 1)};
    return {withTrailingSlash(setting<Setting::APP_Bildpfad>()), imageName};
}

QString testCopyFolder() {
    QString folder = setting<Setting::APP_TestBildpfad>();
    if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    return folder;
}

TestCopyResult BelegZumTest(const QString& imageName, const QString& note) {
    TestCopyResult result = TestCopyResult::Failed;
    RunReported(QStringLiteral("actionBelegZumTest"), [&] {
        const TestCopySource source = testCopySource(imageName);
        const QString sourcePath = source.folder + source.fileName;
        if (imageName.isEmpty() || source.fileName.isEmpty() || !QFileInfo(sourcePath).isFile()) {
            ShowMessage(Msg::NoImagefile, MsgBox::Exclamation);
            result = TestCopyResult::NoImage;
            return;
        }
        const QString folder = testCopyFolder();
        if (folder.isEmpty()) {
            ShowMessage(Msg::NoTestPath, MsgBox::Exclamation);
            result = TestCopyResult::NoTestPath;
            return;
        }
        const QString target = folder + source.fileName;
        copyReplacing(sourcePath, target);
        const QString notePath = folder + QFileInfo(source.fileName).completeBaseName() + QStringLiteral(".txt");
        if (!writeTextFile(notePath, note + QLatin1Char('\n')))
            throw VeridonError(PathFileAccessError, Msg::ErrCannotWrite, {notePath});
        ShowMessage(Msg::ToTestDone, MsgBox::Information, {target});
        result = TestCopyResult::Done;
    });
    return result;
}
