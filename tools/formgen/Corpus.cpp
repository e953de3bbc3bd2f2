// SPDX-License-Identifier: Apache-2.0
// Identities and degradations of the test corpus. The name lists are short on purpose: a few
// common names per state, with the letters that state's alphabet adds to the Latin one.
#include "Corpus.h"

#include "FormLayout.h"

#include <QDate>
#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <array>

namespace {

struct StateNames {
    const char* code;
    const char* numeric; // ISO 3166 numeric
    const char* institution;
    std::array<const char*, 3> surnames, givenNames;
};

const QList<StateNames>& states() {
    static const QList<StateNames> list{
        {"AT", "040", "1100 - ÖGK Wien", {"Gruber", "Höller", "Strauß"}, {"Jürgen", "Theresa", "Lukas"}},
        {"BE", "056", "300 - Mutualité Chrétienne", {"Peeters", "Lefèvre", "Dubois"}, {"Anaïs", "Joël", "Lotte"}},
        {"BG", "100", "2200 - NZOK Sofia", {"Ivanova", "Georgiev", "Dimitrov"}, {"Petar", "Yordanka", "Stoyan"}},
        {"HR", "191", "51 - HZZO Zagreb", {"Horvat", "Kovačević", "Babić"}, {"Đurđica", "Stjepan", "Željko"}},
        {"CY", "196", "101 - HIO Nicosia", {"Georgiou", "Christodoulou", "Kyriakou"}, {"Andreas", "Eleni", "Nikos"}},
        {"CZ", "203", "111 - VZP ČR", {"Dvořák", "Novotná", "Černý"}, {"Jiří", "Růžena", "Tomáš"}},
        {"DK", "208", "1 - Region Hovedstaden", {"Jørgensen", "Søndergaard", "Nielsen"}, {"Søren", "Åse", "Mette"}},
        {"EE", "233", "1 - Tervisekassa", {"Tamm", "Sööt", "Õunapuu"}, {"Jüri", "Mari-Liis", "Tõnu"}},
        {"FI", "246", "1 - Kela", {"Mäkinen", "Hämäläinen", "Korhonen"}, {"Väinö", "Aino", "Jyrki"}},
        {"FR", "250", "75 - CPAM Paris", {"Lefèvre", "Moreau", "Girard"}, {"Hélène", "François", "Zoé"}},
        {"DE", "276", "108310400 - AOK Bayern", {"Müller", "Groß", "Schäfer"}, {"Jürgen", "Käthe", "Björn"}},
        {"GR", "300", "1 - EOPYY Athina", {"Papadopoulos", "Nikolaidou", "Vlachos"}, {"Dimitrios", "Eleni", "Giorgos"}},
        {"HU", "348", "1 - NEAK Budapest", {"Szőke", "Tóth", "Kovács"}, {"Ödön", "Zsófia", "Gyöngyi"}},
        {"IS",
         "352",
         "1 - Sjúkratryggingar",
         {"Þórðardóttir", "Guðmundsson", "Ólafsdóttir"},
         {"Guðrún", "Þór", "Sigríður"}},
        {"IE", "372", "1 - HSE Dublin", {"O'Brien", "Murphy", "Ní Bhriain"}, {"Siobhán", "Seán", "Aoife"}},
        {"IT", "380", "120207 - ASL Roma 1", {"Rossi", "Esposito", "Ricci"}, {"Niccolò", "Giuseppe", "Lucia"}},
        {"LV", "428", "1 - NVD Rīga", {"Bērziņš", "Kalniņa", "Ozols"}, {"Jānis", "Līga", "Ģirts"}},
        {"LI", "438", "1 - FKB Vaduz", {"Büchel", "Frick", "Marxer"}, {"Jürg", "Andrea", "Rainer"}},
        {"LT", "440", "1 - VLK Vilnius", {"Kazlauskas", "Petrauskienė", "Žukauskas"}, {"Gintarė", "Jonas", "Aušra"}},
        {"LU", "442", "1 - CNS Luxembourg", {"Schmit", "Weber", "Muller"}, {"Léon", "Josée", "Marc"}},
        {"MT", "470", "1 - Ministry for Health", {"Borg", "Camilleri", "Żammit"}, {"Ġorġ", "Marija", "Ħanna"}},
        {"NL", "528", "3311 - Zilveren Kruis", {"de Vries", "Jansen", "van Dijk"}, {"Jan Pieter", "Eline", "Sanne"}},
        {"NO", "578", "1 - HELFO", {"Håland", "Løvås", "Hansen"}, {"Øystein", "Ingrid", "Bjørn"}},
        {"PL", "616", "0110 - NFZ Warszawa", {"Wiśniewska", "Kowalczyk", "Wójcik"}, {"Małgorzata", "Łukasz", "Zofia"}},
        {"PT", "620", "1 - SNS Lisboa", {"Gonçalves", "Conceição", "Araújo"}, {"João", "Inês", "Sebastião"}},
        {"RO", "642", "1 - CNAS București", {"Bălănescu", "Popescu", "Câmpeanu"}, {"Cătălina", "Ioana", "Mihăiță"}},
        {"SK", "703", "24 - VšZP Bratislava", {"Kováčová", "Horváth", "Šťastný"}, {"Ľubomír", "Zuzana", "Ján"}},
        {"SI", "705", "1 - ZZZS Ljubljana", {"Novak", "Krajnc", "Žagar"}, {"Špela", "Matej", "Urška"}},
        {"ES", "724", "28 - INSS Madrid", {"García López", "Muñoz", "Peña"}, {"José Luis", "María", "Íñigo"}},
        {"SE", "752", "SE - Försäkringskassan", {"Lindqvist", "Åberg", "Söderström"}, {"Astrid", "Björn", "Märta"}},
        {"CH", "756", "1509 - Helsana", {"Müller", "Favre", "Bernasconi"}, {"Zoë", "Rémy", "Urs"}},
    };
    return list;
}

QString digits(std::mt19937& random, int count) {
    QString s;
    std::uniform_int_distribution<int> d(0, 9);
    for (int i = 0; i < count; ++i)
        s += QChar(u'0' + d(random));
    return s;
}

QString randomDate(std::mt19937& random, int fromYear, int toYear) {
    const QDate first(fromYear, 1, 1);
    std::uniform_int_distribution<int> d(0, int(first.daysTo(QDate(toYear, 12, 31))));
    return first.addDays(d(random)).toString(QStringLiteral("dd.MM.yyyy"));
}

// The tinted card: a light ground with a fine diagonal hatching and the circle of twelve stars at its
// upper right, painted under the ink.
void paintCardBackground(QImage& grey, const formlayout::Layout& layout) {
    QImage ground(grey.size(), QImage::Format_Grayscale8);
    ground.fill(Qt::white);
    {
        QPainter p(&ground);
        p.setRenderHint(QPainter::Antialiasing);
        const QRect card(layout.card.x, layout.card.y, layout.card.dx, layout.card.dy);
        QPainterPath outline;
        outline.addRoundedRect(card, 36, 36);
        p.setClipPath(outline);
        p.fillRect(card, QColor(222, 222, 222));
        p.setPen(QPen(QColor(196, 196, 196), 1));
        for (int x = card.left() - card.height(); x < card.right(); x += 7)
            p.drawLine(x, card.bottom(), x + card.height(), card.top());
        const QPointF centre(card.right() - 130, card.top() + 210);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(150, 150, 150));
        for (int i = 0; i < 12; ++i) {
            const double a = i * M_PI / 6;
            const QPointF c = centre + QPointF(70 * std::cos(a), 70 * std::sin(a));
            QPolygonF star;
            for (int k = 0; k < 10; ++k) {
                const double r = k % 2 ? 4.0 : 10.0, b = -M_PI / 2 + k * M_PI / 5;
                star << c + QPointF(r * std::cos(b), r * std::sin(b));
            }
            p.drawPolygon(star);
        }
    }
    for (int y = 0; y < grey.height(); ++y) {
        uchar* line = grey.scanLine(y);
        const uchar* under = ground.constScanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            line[x] = std::min(line[x], under[x]);
    }
}

QImage boxBlur(const QImage& grey) {
    QImage out = grey.copy();
    for (int y = 1; y < grey.height() - 1; ++y) {
        uchar* o = out.scanLine(y);
        for (int x = 1; x < grey.width() - 1; ++x) {
            int sum = 0;
            for (int dy = -1; dy <= 1; ++dy) {
                const uchar* l = grey.constScanLine(y + dy);
                sum += l[x - 1] + l[x] + l[x + 1];
            }
            o[x] = uchar(sum / 9);
        }
    }
    return out;
}

} // namespace

QList<DemoForm> corpusForms(int count, std::mt19937& random) {
    QList<DemoForm> forms;
    std::uniform_int_distribution<int> pick(0, 2);
    std::uniform_int_distribution<int> pickState(0, int(states().size()) - 1);
    for (int n = 0; n < count; ++n) {
        const StateNames& s = states().at(pickState(random));
        DemoForm f;
        f.bmpName = QStringLiteral("C%1.tif").arg(n + 1, 5, 10, QLatin1Char('0'));
        f.typ = n % 2 ? 5 : 4;
        f.values = {{QStringLiteral("BMPName"), f.bmpName},
                    {QStringLiteral("TYP"), QString::number(f.typ)},
                    {QStringLiteral("SCANDAT"), randomDate(random, 2026, 2026)},
                    {QStringLiteral("FORM_ID"), QStringLiteral("E-111N")},
                    {QStringLiteral("STATE"), QLatin1String(s.code)},
                    {QStringLiteral("NACHNAME"), QString::fromUtf8(s.surnames.at(size_t(pick(random))))},
                    {QStringLiteral("VORNAME"), QString::fromUtf8(s.givenNames.at(size_t(pick(random))))},
                    {QStringLiteral("GEBDAT"), randomDate(random, 1940, 2005)},
                    {QStringLiteral("PERSONAL_ID"), digits(random, 8 + pick(random) * 2)},
                    {QStringLiteral("INSTITUT_ID"), QString::fromUtf8(s.institution)},
                    {QStringLiteral("CARD_ID"),
                     QStringLiteral("80") + QLatin1String(s.numeric) + digits(random, 5) + digits(random, 10)},
                    {QStringLiteral("CARD_EXPIRY"), randomDate(random, 2026, 2031)}};
        forms.append(f);
    }
    return forms;
}

Degradation randomDegradation(std::mt19937& random, int dpi) {
    std::uniform_real_distribution<double> unit(0, 1);
    Degradation d;
    d.cardBackground = unit(random) < 0.7;
    d.skewDegrees = (unit(random) * 2 - 1) * 2;
    d.shiftX = int((unit(random) * 2 - 1) * 60);
    d.shiftY = int((unit(random) * 2 - 1) * 60);
    d.speckles = int(unit(random) * 1500);
    d.tonerLoss = unit(random) < 0.5 ? unit(random) * 0.08 : 0;
    d.blur = unit(random) < 0.5;
    d.threshold = 110 + int(unit(random) * 40);
    d.dpi = dpi ? dpi : (unit(random) < 0.5 ? 200 : 300);
    d.grey = unit(random) < 0.2;
    return d;
}

QImage degradePage(const QImage& page, const formlayout::Layout& layout, const Degradation& d, std::mt19937& random) {
    QImage grey = page.convertToFormat(QImage::Format_Grayscale8);
    if (d.cardBackground)
        paintCardBackground(grey, layout);
    const double scale = d.dpi / double(formlayout::pageDpi);
    QImage moved(qRound(grey.width() * scale), qRound(grey.height() * scale), QImage::Format_Grayscale8);
    moved.fill(Qt::white);
    {
        QPainter p(&moved);
        p.setRenderHint(QPainter::SmoothPixmapTransform);
        p.translate(moved.width() / 2.0, moved.height() / 2.0);
        p.rotate(d.skewDegrees);
        p.translate(-moved.width() / 2.0, -moved.height() / 2.0);
        p.scale(scale, scale);
        p.drawImage(QPointF(d.shiftX, d.shiftY), grey);
    }
    if (d.blur)
        moved = boxBlur(moved);
    std::uniform_real_distribution<double> unit(0, 1);
    if (d.tonerLoss > 0)
        for (int y = 0; y < moved.height(); ++y) {
            uchar* line = moved.scanLine(y);
            for (int x = 0; x < moved.width(); ++x)
                if (line[x] < 128 && unit(random) < d.tonerLoss)
                    line[x] = 255;
        }
    {
        std::uniform_int_distribution<int> px(0, moved.width() - 3), py(0, moved.height() - 3);
        for (int i = 0; i < d.speckles; ++i) {
            const int x = px(random), y = py(random), size = 1 + i % 2;
            for (int dy = 0; dy < size; ++dy)
                for (int dx = 0; dx < size; ++dx)
                    moved.scanLine(y + dy)[x + dx] = 0;
        }
    }
    QImage out;
    if (d.grey) {
        out = moved;
    } else {
        QImage cut = moved.copy();
        for (int y = 0; y < cut.height(); ++y) {
            uchar* line = cut.scanLine(y);
            for (int x = 0; x < cut.width(); ++x)
                line[x] = line[x] < d.threshold ? 0 : 255;
        }
        out = cut.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither | Qt::MonoOnly);
    }
    const int dotsPerMetre = qRound(d.dpi * 39.3700787);
    out.setDotsPerMeterX(dotsPerMetre);
    out.setDotsPerMeterY(dotsPerMetre);
    return out;
}

bool writeTruth(const QString& path, const QList<DemoForm>& forms) {
    static const char* const columns[] = {"BMPName", "TYP",    "SCANDAT",     "FORM_ID",     "STATE",   "NACHNAME",
                                          "VORNAME", "GEBDAT", "PERSONAL_ID", "INSTITUT_ID", "CARD_ID", "CARD_EXPIRY"};
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QStringList header;
    for (const char* c : columns)
        header << QLatin1String(c);
    QString text = header.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const DemoForm& f : forms) {
        QStringList cells;
        for (const QString& c : header)
            cells << f.values.value(c);
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return file.write(text.toUtf8()) >= 0 && file.flush();
}
