#include "masters/Tan_frm.h"

Tan_frm::Tan_frm(QWidget* parent) : ms_frm(QStringLiteral("Tan"), parent) {}
