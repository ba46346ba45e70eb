#pragma once

#include "widgets/preferences/PrefsControls.h"

#include <QGridLayout>
#include <QString>

class QWidget;

namespace veilkeep {

// The rows of a page of settings: what they are about at the leading side, check boxes and other controls
// beside it. Main thread.
class SettingRows {
public:
    SettingRows(QWidget& page, PrefsControls& controls);

    void beginSection(const QString& heading); // of the next row, with room above it
    QCheckBox* addBox(PrefsBox box, const QString& title);
    void add(QWidget* control, bool isIndented = false); // indented: below a box that it belongs to

private:
    PrefsControls& m_controls;
    QGridLayout* m_grid;
    QString m_heading;
};

int pageMargin();

} // namespace veilkeep
