#include <QApplication>
#include "app/Commands.h"

int main(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
    if (!args.isEmpty() && isCommand(args.first())) {
        QCoreApplication app(argc, argv);
        return runCommand(args);
    }
    QApplication app(argc, argv);
    return runGui();
}
