#include "shell/Opening_frm.h"
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

Opening_frm::Opening_frm()
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
{
    setObjectName(QStringLiteral("Opening_frm"));
    setWindowTitle(QStringLiteral("Welcome"));
    setStyleSheet(QStringLiteral("background: #1f4e9c; color: white;"));
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(48, 32, 48, 32);
    setMinimumSize(460, 240);
    auto* name = new QLabel(QStringLiteral("Velmora"), this);
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 2.6);
    f.setBold(true);
    name->setFont(f);
    name->setAlignment(Qt::AlignCenter);
    auto* welcome = new QLabel(QStringLiteral("Welcome"), this);
    welcome->setAlignment(Qt::AlignCenter);
    lay->addWidget(name);
    lay->addWidget(welcome);
    adjustSize();
    if (QScreen* s = QGuiApplication::primaryScreen())
        move(s->availableGeometry().center() - rect().center());
}
