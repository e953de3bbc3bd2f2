// SPDX-License-Identifier: Apache-2.0
// veridon-reportforms: draws the bitmap templates of the demo reports. Every value position of
// data/tables/sysReportFields.tsv gets a labelled box exactly where the report prints the value, so
// templates and master data cannot drift apart. The page is the printable area of an A4 sheet with
// 10 mm margins (190 x 277 mm, or turned for a landscape report) at 100 dpi, black and white.
//
// Usage: veridon-reportforms DATA_FOLDER   (writes DATA_FOLDER/home/<Report_File>)

#include <QDir>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QTextStream>
#include <cstdio>

namespace {

constexpr double dotsPerMm = 100.0 / 25.4;
constexpr double valueCharMm = 2.54; // advance of one character of the printed values (12 pt mono)

struct Layout {
    const char* file;
    const char* title;
    const char* subtitle;
    bool landscape;
};

const Layout layouts[] = {
    {"bericht_ambrix.bmp", "EHIC-Bericht zur Ambrix-Karte", "Angaben zur Europäischen Krankenversicherungskarte",
     false},
    {"bericht_stationaer_1.bmp", "Aufnahmeanzeige \u2013 stationäre Behandlung", "Seite 1 von 2", false},
    {"bericht_stationaer_2.bmp", "Kostenübernahme \u2013 stationäre Behandlung", "Seite 2 von 2", false},
    {"bericht_ambulant.bmp", "Behandlungsausweis \u2013 ambulante Behandlung",
     "Vorlage der Europäischen Krankenversicherungskarte", true},
};

struct FieldLabel {
    const char* label;
    int length; // characters the box holds
};

const QHash<QString, FieldLabel>& fieldLabels() {
    static const QHash<QString, FieldLabel> labels{
        {QStringLiteral("NACHNAME"), {"Name", 40}},
        {QStringLiteral("VORNAME"), {"Vorname(n)", 40}},
        {QStringLiteral("GEBDAT"), {"Geburtsdatum", 10}},
        {QStringLiteral("PERSONAL_ID"), {"Persönliche Kennnummer", 20}},
        {QStringLiteral("STATE"), {"Ausstellender Staat", 2}},
        {QStringLiteral("SCANDAT"), {"Erfasst am", 10}},
        {QStringLiteral("INSTITUT_ID"), {"Kennnummer des Trägers", 40}},
        {QStringLiteral("CARD_ID"), {"Kennnummer der Karte", 20}},
        {QStringLiteral("CARD_EXPIRY"), {"Ablaufdatum", 10}},
        {QStringLiteral("FORM_ID"), {"Formular", 10}},
    };
    return labels;
}

QList<QStringList> readTable(const QString& path) {
    QList<QStringList> rows;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (qsizetype i = 1; i < lines.size(); ++i)
        rows << QString(lines[i]).remove(QLatin1Char('\r')).split(QLatin1Char('\t'));
    return rows;
}

QRectF mm(double x, double y, double w, double h) {
    return QRectF(x * dotsPerMm, y * dotsPerMm, w * dotsPerMm, h * dotsPerMm);
}

QImage drawPage(const Layout& layout, const QList<QStringList>& fields) {
    const double widthMm = layout.landscape ? 277 : 190;
    const double heightMm = layout.landscape ? 190 : 277;
    QImage page(int(widthMm * dotsPerMm + 0.5), int(heightMm * dotsPerMm + 0.5), QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter p(&page);
    p.setPen(QPen(Qt::black, 2));
    p.drawRect(mm(1, 1, widthMm - 2, heightMm - 2));

    QFont title(QStringLiteral("Liberation Sans"));
    title.setPixelSize(int(6 * dotsPerMm));
    title.setBold(true);
    p.setFont(title);
    p.drawText(mm(10, 10, widthMm - 20, 10), Qt::AlignLeft | Qt::AlignVCenter, QString::fromUtf8(layout.title));
    QFont small(QStringLiteral("Liberation Sans"));
    small.setPixelSize(int(3.2 * dotsPerMm));
    p.setFont(small);
    p.drawText(mm(10, 21, widthMm - 20, 6), Qt::AlignLeft | Qt::AlignVCenter, QString::fromUtf8(layout.subtitle));
    p.setPen(QPen(Qt::black, 1));
    p.drawLine(mm(10, 30, widthMm - 20, 0).topLeft(), mm(10, 30, widthMm - 20, 0).topRight());

    for (const QStringList& row : fields) {
        const double x = row.value(1).toDouble();
        const double y = row.value(2).toDouble();
        const FieldLabel label = fieldLabels().value(row.value(3), FieldLabel{"", 20});
        p.drawText(mm(x, y - 6, 100, 5), Qt::AlignLeft | Qt::AlignBottom, QString::fromUtf8(label.label));
        p.drawRect(mm(x - 1.5, y - 1, label.length * valueCharMm + 3, 7));
    }
    p.setFont(small);
    const double half = widthMm / 2;
    p.drawLine(mm(10, heightMm - 21, half - 25, 0).topLeft(), mm(10, heightMm - 21, half - 25, 0).topRight());
    p.drawLine(mm(half, heightMm - 21, half - 10, 0).topLeft(), mm(half, heightMm - 21, half - 10, 0).topRight());
    p.drawText(mm(10, heightMm - 20, half - 25, 6), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Ort, Datum"));
    p.drawText(mm(half, heightMm - 20, half - 10, 6), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Stempel und Unterschrift"));
    p.end();

    // Black and white with the table {black, white}: the template stays a small 1-bit image when
    // it is embedded in a print job or a PDF.
    QImage mono = page.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
    if (mono.color(0) != qRgb(0, 0, 0)) {
        mono.invertPixels();
        mono.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    }
    mono.setDotsPerMeterX(int(dotsPerMm * 1000 + 0.5));
    mono.setDotsPerMeterY(int(dotsPerMm * 1000 + 0.5));
    return mono;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc != 2) {
        err << "Aufruf: veridon-reportforms DATENORDNER\n";
        return 2;
    }
    const QString data = QDir(QString::fromLocal8Bit(argv[1])).absolutePath() + QLatin1Char('/');
    const QList<QStringList> reports = readTable(data + QStringLiteral("tables/sysReports.tsv"));
    const QList<QStringList> fields = readTable(data + QStringLiteral("tables/sysReportFields.tsv"));
    int written = 0;
    for (const Layout& layout : layouts) {
        QString id;
        for (const QStringList& r : reports)
            if (r.value(1) == QLatin1String(layout.file))
                id = r.value(0);
        QList<QStringList> own;
        for (const QStringList& f : fields)
            if (f.value(0) == id)
                own << f;
        const QString target = data + QStringLiteral("home/") + QLatin1String(layout.file);
        if (!drawPage(layout, own).save(target, "BMP")) {
            err << "Kann " << target << " nicht schreiben\n";
            return 1;
        }
        ++written;
    }
    QTextStream(stdout) << written << " Vorlagen geschrieben\n";
    return 0;
}
