// SPDX-License-Identifier: Apache-2.0
#include "mdlWindowPositions.h"

#include "app/Database.h"

#include <QSqlQuery>

WindowPosition ReadWindowPosition(const QString& formName) {
    QSqlQuery q = execSql(QStringLiteral("SELECT x, y, dx, dy FROM zvbSysWindowPositions WHERE formName=? "
                                         "ORDER BY rowid LIMIT 1"),
                          {formName});
    WindowPosition position;
    if (q.next()) {
        // A null column reads as 0, like a missing row.
        position.x = q.value(0).toInt();
        position.y = q.value(1).toInt();
        position.dx = q.value(2).toInt();
        position.dy = q.value(3).toInt();
    }
    return position;
}

void WriteWindowPosition(const QString& formName, const WindowPosition& position) {
    const QVariantList values{qMax(position.x, 0), qMax(position.y, 0), position.dx, position.dy, formName};
    Transaction transaction;
    QSqlQuery existing =
        execSql(QStringLiteral("SELECT COUNT(*) FROM zvbSysWindowPositions WHERE formName=?"), {formName});
    const bool found = existing.next() && existing.value(0).toInt() > 0;
    existing.finish();
    if (found)
        execSql(QStringLiteral("UPDATE zvbSysWindowPositions SET x=?, y=?, dx=?, dy=? WHERE formName=?"), values);
    else
        execSql(QStringLiteral("INSERT INTO zvbSysWindowPositions (x, y, dx, dy, formName) VALUES (?,?,?,?,?)"),
                values);
    transaction.commit();
}

WindowPosition FitOnScreen(WindowPosition position, qint32 screenWidth, qint32 screenHeight) {
    if (position.x + MinimumVisiblePixels >= screenWidth)
        position.x = 0;
    if (position.y + MinimumVisiblePixels >= screenHeight)
        position.y = 0;
    return position;
}
