#pragma once

#include "widgets/preferences/PrefsControls.h"

#include <QWidget>

namespace veilkeep {

class SecurityPage : public QWidget {
    Q_OBJECT

public:
    explicit SecurityPage(PrefsControls& controls);

signals:
    void changePasswordClicked();
};

} // namespace veilkeep
