#pragma once
// The slip kinds and their codes. `Kubun` of heads and lines of Dur/Dsr/Dud/Dsd is the position
// from 0; on Dny/Dsh it is the position from 1. The two bases are kept apart on purpose.
#include <QString>
#include <QStringList>
#include "ledgers/LedgerRows.h"   // ThiFlag, the mark the ledgers read

struct SlipKind {
    QString head;      // "Dur", "Dsr"; empty for deposits and payments
    QString line;      // "Dud", "Dsd", "Dny", "Dsh"
    QString screen;    // "Slip_frm", "Cashier_frm"
    QString side;      // "URI", "KAI"; empty for deposits and payments
    QString partner;   // "Tor", "Sir"
    QString title;
};

// By the kind word of MenuKey ("Dur", "Dsr", "Dny", "Dsh"); nullptr for any other word.
const SlipKind* slipKind(const QString& kind);

// Head settlement list (code = index from 0): "売掛"/"買掛", "現金".
QStringList headKubunTexts(const QString& kind);
// Line kinds (code = index from 0): "売  上"/"仕  入", "返  品", "値  引", "経  費".
QStringList lineKubunTexts(const QString& kind);
// Money kinds of Dny/Dsh, code 1..6 ("現  金" .. "調  整"); empty text outside 1..6.
QString moneyKubunText(int code);
// Tax kind of a line, 1..4 ("外  税", "内  税", "非課税", "別計算"); empty outside.
QString zeiFlagText(int code);

