#include <cstdio>
#include <QApplication>
#include "app/Commands.h"
#include "app/PrintReports.h"

int main(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
    if (!args.isEmpty() && args.first() == QLatin1String("print")) return runPrintMain(argc, argv, args);
    if (!args.isEmpty() && isCommand(args.first())) {
        QCoreApplication app(argc, argv);
        return runCommand(args);
    }
    // Without a display Qt would stop with a plugin error that tells a user nothing.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        std::fprintf(stderr, "velmora: 画面がありません。デスクトップの端末から起動してください"
                             "（画面なしで動かすには QT_QPA_PLATFORM=offscreen）。\n");
        return 1;
    }
    QApplication app(argc, argv);
    return runGui();
}
