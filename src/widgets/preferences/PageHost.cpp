#include "widgets/preferences/PageHost.h"

#include <QEvent>
#include <QLayout>

#include <algorithm>

namespace veilkeep {

void PageHost::addPage(QWidget& page) {
    page.setParent(this);
    page.hide();
    m_pages.push_back(&page);
}

void PageHost::showPage(QWidget& page) {
    if (m_shown)
        m_shown->hide();
    m_shown = &page;
    place();
    page.show();
}

int PageHost::widthNeeded() const {
    int width = 0;
    for (const QWidget* const page : m_pages)
        width = std::max({width, page->sizeHint().width(), page->minimumSizeHint().width()});
    return width;
}

int PageHost::heightNeeded() const {
    if (!m_shown)
        return 0;
    const QLayout* const layout = m_shown->layout();
    return layout && layout->hasHeightForWidth() ? layout->totalHeightForWidth(width())
                                                 : m_shown->sizeHint().height();
}

void PageHost::place() {
    if (m_shown)
        m_shown->setGeometry(0, 0, width(), heightNeeded());
}

bool PageHost::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        place();
        emit neededSizeChanged();
    }
    return QWidget::event(event);
}

void PageHost::resizeEvent(QResizeEvent*) {
    place();
}

} // namespace veilkeep
