#include "widgets/preferences/SettingRows.h"

#include "widgets/controls/CheckBox.h"

#include <QLabel>
#include <QStyle>
#include <QWidget>

namespace veilkeep {
namespace {

constexpr int margin = 24, spacing = 8, sectionGap = 10, columnGap = 12;

} // namespace

int pageMargin() {
    return margin;
}

SettingRows::SettingRows(QWidget& page, PrefsControls& controls)
    : m_controls(controls), m_grid(new QGridLayout(&page)) {
    m_grid->setContentsMargins(margin, margin - 4, margin, margin);
    m_grid->setHorizontalSpacing(columnGap);
    m_grid->setVerticalSpacing(spacing);
    m_grid->setColumnStretch(0, 0);
    m_grid->setColumnStretch(1, 1);
}

void SettingRows::beginSection(const QString& heading) {
    if (m_grid->count() > 0)
        m_grid->setRowMinimumHeight(m_grid->rowCount(), sectionGap - spacing / 2);
    m_heading = heading;
}

QCheckBox* SettingRows::addBox(PrefsBox box, const QString& title) {
    auto* const control = new CheckBox(title);
    m_controls.boxes.emplace(box, control);
    add(control);
    return control;
}

void SettingRows::add(QWidget* control, bool isIndented) {
    const int row = m_grid->rowCount();
    if (!m_heading.isEmpty()) {
        auto* const heading = new QLabel(m_heading);
        heading->setTextFormat(Qt::PlainText);
        m_grid->addWidget(heading, row, 0, Qt::AlignTrailing | Qt::AlignVCenter);
        m_heading.clear();
    }
    if (isIndented) {
        const int indicator = control->style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                              control->style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
        auto* const indented = new QHBoxLayout;
        indented->addSpacing(indicator);
        indented->addWidget(control, 1);
        m_grid->addLayout(indented, row, 1);
    } else {
        m_grid->addWidget(control, row, 1, Qt::AlignLeading | Qt::AlignVCenter);
    }
}

} // namespace veilkeep
