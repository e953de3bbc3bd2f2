// SPDX-License-Identifier: Apache-2.0
// make-demo-result: writes the demo's evaluation result file from the demo forms, as the evaluation
// program would read their cards, reading errors included.
//   make-demo-result data/demo/forms.tsv data/demo/home/import/zvscan.txt
// The file is written as UTF-8 with LF line ends, like every text file under data/; `init` converts
// it to the program's file encoding when it installs it.

#include "CardText.h"

#include <QFile>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "Aufruf: make-demo-result FORMS.TSV ZIELDATEI\n");
        return 2;
    }
    const QVector<CardForm> forms = readCardForms(QString::fromLocal8Bit(argv[1]));
    if (forms.isEmpty()) {
        std::fprintf(stderr, "make-demo-result: keine Belege in %s\n", argv[1]);
        return 1;
    }
    QFile out(QString::fromLocal8Bit(argv[2]));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "make-demo-result: %s kann nicht geschrieben werden\n", argv[2]);
        return 1;
    }
    for (const QString& line : demoResultLines(forms))
        out.write((line + QLatin1Char('\n')).toUtf8());
    return 0;
}
