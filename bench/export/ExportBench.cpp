// SPDX-License-Identifier: Apache-2.0
// Export throughput. Fills a fresh home with 10,000 accepted records (the eight demo forms over and
// over, each with its own image file), runs the export pass without reports, and prints XML files
// per second — once with the day's backup off and once with it on (XML copy, image copy, exp.txt
// line) — next to the floor: writing 10,000 files of the same size from a plain loop with QFile,
// and that loop again deleting one image file per turn, as the export must.
//
// Usage: bench_export [RECORDS] [FOLDER]   (defaults: 10000, a temporary folder under $TMPDIR)

#include "app/Database.h"
#include "app/Home.h"
#include "app/TextFile.h"
#include "app/mdlDB.h"
#include "export/mdlExport.h"
#include "workflow/Workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>

namespace {

QTextStream out(stdout);

QList<QStringList> demoForms(QStringList& header) {
    QFile file(masterDataDir() + QStringLiteral("demo/forms.tsv"));
    file.open(QIODevice::ReadOnly);
    QStringList lines = QString::fromUtf8(file.readAll()).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    header = lines.takeFirst().split(QLatin1Char('\t'));
    QList<QStringList> rows;
    for (const QString& line : std::as_const(lines))
        if (!line.isEmpty())
            rows << line.split(QLatin1Char('\t'));
    return rows;
}

// count accepted records with their images, in one transaction.
void fillRecords(int count) {
    QStringList header;
    const QList<QStringList> forms = demoForms(header);
    QStringList marks;
    for (int i = 0; i < header.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery insert =
        prepareSql(QStringLiteral("INSERT INTO zvbWerte (%1, Workflow_Status, Korrigiert) VALUES (%2, 40, 1)")
                       .arg(header.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    const int bmpColumn = int(header.indexOf(QStringLiteral("BMPName")));
    const QString images = withTrailingSlash(GetSysText(QStringLiteral("APP_Bildpfad")));
    const QByteArray image(48 * 1024, '\x55'); // about a G4-compressed A4 page
    Transaction transaction;
    for (int i = 0; i < count; ++i) {
        QStringList row = forms[i % forms.size()];
        row[bmpColumn] = QStringLiteral("bench%1.tif").arg(i, 6, 10, QLatin1Char('0'));
        for (int c = 0; c < row.size(); ++c)
            insert.bindValue(c, row[c]);
        execPrepared(insert);
        QFile f(images + row[bmpColumn]);
        f.open(QIODevice::WriteOnly);
        f.write(image);
    }
    transaction.commit();
}

// Runs the export pass over count fresh records; returns the seconds it took.
double timedExport(int count, bool backup) {
    SetSysValue(QStringLiteral("Backup_Enabled"), backup ? QStringLiteral("1") : QStringLiteral("0"));
    fillRecords(count);
    QElapsedTimer timer;
    timer.start();
    ExportZVBWerte();
    const double seconds = timer.nsecsElapsed() / 1e9;
    if (CountRows(QStringLiteral("*"), GetValuesTable(), QString()) != 0)
        out << "  WARNUNG: nicht alle Datensätze wurden exportiert\n";
    return seconds;
}

qint64 averageSize(const QString& folder) {
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    qint64 total = 0;
    for (const QFileInfo& f : files)
        total += f.size();
    return files.isEmpty() ? 0 : total / files.size();
}

// The floor: count files of size bytes written with a plain open/write/close loop. With
// deleteImages, each turn also deletes one image file as the export does, which shows what the file
// system charges for the deletions alone.
double timedPlainWrites(const QString& folder, int count, qint64 size, bool deleteImages) {
    QDir().mkpath(folder);
    const QByteArray bytes(size, 'x');
    const QByteArray image(48 * 1024, '\x55');
    if (deleteImages) {
        for (int i = 0; i < count; ++i) {
            QFile f(folder + QStringLiteral("/bild%1.tif").arg(i, 6, 10, QLatin1Char('0')));
            f.open(QIODevice::WriteOnly);
            f.write(image);
        }
    }
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i) {
        QFile f(folder + QStringLiteral("/plain%1.xml").arg(i, 6, 10, QLatin1Char('0')));
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
        f.close();
        if (deleteImages)
            QFile::remove(folder + QStringLiteral("/bild%1.tif").arg(i, 6, 10, QLatin1Char('0')));
    }
    return timer.nsecsElapsed() / 1e9;
}

void report(const char* what, int count, double seconds) {
    out << QStringLiteral("  %1 %2 Dateien/s  (%3 s für %4 Dateien)\n")
               .arg(QString::fromUtf8(what), -44)
               .arg(count / seconds, 9, 'f', 0)
               .arg(seconds, 0, 'f', 2)
               .arg(count);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int count = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 10000;
    QTemporaryDir temp(argc > 2 ? QString::fromLocal8Bit(argv[2]) + QStringLiteral("/bench-XXXXXX")
                                : QDir::tempPath() + QStringLiteral("/veridon-bench-XXXXXX"));
    const QString home = withTrailingSlash(temp.path());
    initHome(home, false, false);
    SetSysValue(QStringLiteral("Report_Other_Country"), 0);
    SetSysValue(QStringLiteral("Report_Ambrix_Country"), 0);
    out << "Export von " << count << " Datensätzen in " << home << '\n';
    out.flush();

    const double withoutBackup = timedExport(count, false);
    const qint64 size = averageSize(home + QStringLiteral("export"));
    QDir(home + QStringLiteral("export")).removeRecursively();
    QDir().mkpath(home + QStringLiteral("export"));
    const double withBackup = timedExport(count, true);
    const double floor = timedPlainWrites(home + QStringLiteral("boden"), count, size, false);
    const double floorWithDeletes = timedPlainWrites(home + QStringLiteral("boden2"), count, size, true);

    out << "XML-Dateien je " << size << " Bytes:\n";
    report("Export, Sicherung aus", count, withoutBackup);
    report("Export, Sicherung an (XML, Bild, exp.txt)", count, withBackup);
    report("Boden: gleich große Dateien, schlichte Schleife", count, floor);
    report("Boden und je Datei ein Bild gelöscht", count, floorWithDeletes);
    out << QStringLiteral("  Export (Sicherung aus) braucht das %1-fache des Bodens\n")
               .arg(withoutBackup / floor, 0, 'f', 1);
    closeDatabase();
    return 0;
}
