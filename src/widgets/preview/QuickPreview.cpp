#include "widgets/preview/QuickPreview.h"

#include "widgets/preview/QuickPanel.h"

#include <QKeyEvent>
#include <QScreen>

namespace veilkeep {
namespace {

void centreOver(QWidget& panel, const QWidget& window) {
    QRect place = panel.rect();
    place.moveCenter(window.frameGeometry().center());
    const QRect screen = window.screen()->availableGeometry();
    place.moveRight(qMin(place.right(), screen.right()));
    place.moveBottom(qMin(place.bottom(), screen.bottom()));
    place.moveLeft(qMax(place.left(), screen.left()));
    place.moveTop(qMax(place.top(), screen.top()));
    panel.move(place.topLeft());
}

} // namespace

QuickPreview::QuickPreview(FilesViewController& files, Previews& previews, QWidget& mainWindow)
    : m_files(files), m_previews(previews), m_mainWindow(mainWindow) {
    connect(&files.filesController(), &FilesController::selectionChanged, this, &QuickPreview::reload);
}

QuickPreview::~QuickPreview() = default;

bool QuickPreview::isVisible() const {
    return m_panel != nullptr;
}

QWidget* QuickPreview::panel() const {
    return m_panel.get();
}

void QuickPreview::toggle() {
    if (m_panel)
        return close();
    m_panel = std::make_unique<QuickPanel>(m_files.files(), m_previews, m_mainWindow);
    connect(m_panel.get(), &QuickPanel::closeAsked, this, &QuickPreview::close);
    connect(m_panel.get(), &QuickPanel::keyPressed, this, &QuickPreview::keyPressed);
    connect(m_panel.get(), &QuickPanel::openRequested, this, &QuickPreview::openRequested);
    if (m_size.isValid())
        m_panel->resize(m_size);
    centreOver(*m_panel, m_mainWindow);
    reload();
    m_panel->show();
    m_panel->raise();
    m_panel->activateWindow();
    m_panel->setFocus(); // not the first button
}

// It may be in the middle of an event.
void QuickPreview::close() {
    if (!m_panel)
        return;
    m_size = m_panel->size();
    m_panel->hide();
    m_panel->forget();
    m_panel.release()->deleteLater();
}

void QuickPreview::reload() {
    if (m_panel)
        m_panel->setItems(m_files.getAllSelectedFiles());
}

} // namespace veilkeep
