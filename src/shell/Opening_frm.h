#pragma once
// The splash shown while the company is opened.
#include <QWidget>

class Opening_frm : public QWidget {
public:
    Opening_frm();
};
