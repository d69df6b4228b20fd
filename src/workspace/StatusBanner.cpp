#include "workspace/StatusBanner.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"
#include "library/LibraryStore.h"

#include <QHBoxLayout>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins padding{14, 8, 14, 8};
constexpr int distanceToBottom = 22;
constexpr std::chrono::seconds showingTime{4};

} // namespace

StatusBanner::StatusBanner(LibraryStore &store, QWidget *window)
    : Capsule(Shadow::banner(), padding, window),
      m_store(store),
      m_runLater([this](std::chrono::milliseconds delay, const std::function<void()> &job) {
          QTimer::singleShot(delay, this, job);
      }),
      m_message(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::text, this))
{
    setObjectName(u"statusBanner"_s);
    row().addWidget(m_message);
    connect(&m_store.statusMessage(), &Notifier::changed, this, &StatusBanner::render);
    hide();
    render();
}

void StatusBanner::render()
{
    const std::optional<QString> message = m_store.statusMessage().get();
    if (message) {
        m_message->setText(*message);
        place();
    }
    if (message.has_value() == m_isIn)
        return; // another text doesn't prolong the time that the banner is shown
    m_isIn = message.has_value();
    if (!message) {
        Transition::banner(*this).disappear(*this);
        return;
    }
    raise();
    Transition::banner(*this).appear(*this);
    m_runLater(showingTime, [this, shown = *message] {
        if (m_store.statusMessage().get() == shown)
            m_store.statusMessage().set({});
    });
}

void StatusBanner::place()
{
    placeAtBottom(distanceToBottom);
}
