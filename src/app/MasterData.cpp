// SPDX-License-Identifier: Apache-2.0
#include "MasterData.h"

#include "ColumnInfo.h"
#include "Database.h"
#include "Home.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

int loadTableFile(const QString& table, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw VeridonError(ErrorNumber::FileNotFound, Msg::ErrMasterFileRead, {path});
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (lines.isEmpty() || lines.first().trimmed().isEmpty())
        return 0;
    const QVector<ColumnInfo> tableCols = tableColumns(table);
    if (tableCols.isEmpty())
        requireColumn(table);
    const QStringList header = lines.takeFirst().remove(QLatin1Char('\r')).split(QLatin1Char('\t'));
    QVector<bool> isText;
    QStringList names;
    for (const QString& h : header) {
        const int index = indexOfColumn(tableCols, h.trimmed());
        if (index < 0)
            requireColumn(table, h.trimmed());
        names << QLatin1Char('[') + tableCols[index].name + QLatin1Char(']');
        const DaoType type = tableCols[index].type;
        isText << (type == DaoType::Text || type == DaoType::Memo);
    }
    QStringList marks;
    for (int i = 0; i < names.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery insert = prepareSql(QStringLiteral("INSERT INTO [%1] (%2) VALUES (%3)")
                                      .arg(table, names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    const QString home = homeDir();
    int rows = 0;
    Transaction transaction;
    for (int lineNo = 0; lineNo < lines.size(); ++lineNo) {
        QString line = lines[lineNo];
        line.remove(QLatin1Char('\r'));
        if (line.isEmpty())
            continue;
        const QStringList cells = line.split(QLatin1Char('\t'));
        if (cells.size() > header.size())
            throw VeridonError(ErrorNumber::InvalidArgument, Msg::ErrMasterLine,
                               {path, lineNo + 2, cells.size(), header.size()});
        for (int c = 0; c < header.size(); ++c) {
            QString cell = c < cells.size() ? cells[c] : QString();
            if (cell == QLatin1String("\\N") || (cell.isEmpty() && !isText[c])) {
                insert.bindValue(c, QVariant());
                continue;
            }
            cell.replace(QLatin1String("${HOME}"), home);
            insert.bindValue(c, cell.isEmpty() ? QVariant(QStringLiteral("")) : QVariant(cell));
        }
        execPrepared(insert);
        ++rows;
    }
    transaction.commit();
    return rows;
}

int loadTableFolder(const QString& folder, const QStringList& onlyTables) {
    int rows = 0;
    const QFileInfoList files = QDir(folder).entryInfoList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name);
    for (const QFileInfo& info : files) {
        const QString table = info.fileName().section(QLatin1Char('.'), 0, 0);
        if (onlyTables.isEmpty() || onlyTables.contains(table, Qt::CaseInsensitive))
            rows += loadTableFile(table, info.absoluteFilePath());
    }
    return rows;
}
