#pragma once

#include "widgets/preferences/PrefsControls.h"

#include <QWidget>

namespace veilkeep {

class UpdatePage : public QWidget {
    Q_OBJECT

public:
    explicit UpdatePage(PrefsControls& controls);

signals:
    void checkNowClicked();
};

} // namespace veilkeep
