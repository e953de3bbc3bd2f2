// veridon: the correction workstation with its windows.

#include "StartUp.h"

#include <QApplication>
#include <QStyleFactory>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Veridon"));
    QApplication::setApplicationVersion(QStringLiteral(VERIDON_VERSION));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return RunVeridon(app, QApplication::arguments().mid(1));
}
