#pragma once

#include "widgets/preferences/PrefsControls.h"

#include <QWidget>

namespace veilkeep {

class GeneralPage : public QWidget {
    Q_OBJECT

public:
    explicit GeneralPage(PrefsControls& controls);
};

} // namespace veilkeep
