#include "widgets/filetable/RowSlides.h"

#include <QEasingCurve>

#include <algorithm>

namespace veilkeep {
namespace {

constexpr int frameTime = 16; // milliseconds
constexpr std::size_t rememberedRows = 256;

double endOf(std::int32_t state) {
    return state == File::Hidden ? 1 : 0;
}

} // namespace

RowSlides::RowSlides(QObject* parent) : QObject(parent) {
    m_clock.start();
    m_frames.setInterval(frameTime);
    connect(&m_frames, &QTimer::timeout, this, &RowSlides::nextFrame);
}

double RowSlides::position(const ListedFile& file) {
    const std::int32_t state = file->state();
    const auto [found, isNew] = m_slides.try_emplace(file, Slide{state, endOf(state), -1});
    Slide& slide = found->second;
    if (slide.state != state) {
        const bool wasSwitch = slide.state != File::Broken && state != File::Broken;
        slide = {state, at(slide), wasSwitch && m_duration > 0 ? m_clock.elapsed() : -1};
        if (slide.begin >= 0 && !m_frames.isActive())
            m_frames.start();
    }
    const double position = at(slide);
    if (isNew)
        forgetSome();
    return position;
}

double RowSlides::at(Slide& slide) const {
    if (slide.begin < 0)
        return endOf(slide.state);
    const double part = std::min(1.0, static_cast<double>(m_clock.elapsed() - slide.begin) / m_duration);
    if (part >= 1)
        slide.begin = -1;
    const double eased = QEasingCurve(QEasingCurve::InOutQuad).valueForProgress(part);
    return slide.from + (endOf(slide.state) - slide.from) * eased;
}

void RowSlides::nextFrame() {
    bool anySlides = false;
    for (auto& [file, slide] : m_slides) {
        at(slide);
        anySlides = anySlides || slide.begin >= 0;
    }
    if (!anySlides)
        m_frames.stop();
    emit moved();
}

void RowSlides::forgetSome() {
    if (m_slides.size() > rememberedRows)
        std::erase_if(m_slides, [](const auto& each) { return each.second.begin < 0; });
}

} // namespace veilkeep
