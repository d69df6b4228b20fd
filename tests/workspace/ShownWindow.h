#pragma once

#include "kit/theme/ThemedTest.h"
#include "support/TestLibrary.h"
#include "surface/CodingTextView.h"
#include "workspace/RootView.h"

#include <memory>

/// The real window over the real store, driven by mouse and keys.
class ShownWindow : public ThemedTest {
protected:
    void open()
    {
        m_root = std::make_unique<RootView>(library.store);
        m_root->resize(1180, 780); // whatever the size of the screen
        m_root->show();
        QApplication::setActiveWindow(m_root.get());
        QApplication::processEvents();
    }
    [[nodiscard]] RootView &root() const { return *m_root; }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name = {}) const
    {
        return childOf<Widget>(m_root.get(), name);
    }
    /// As the event loop would: what was to be deleted is.
    static void settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    [[nodiscard]] CodingTextView &text() const { return find<CodingTextView>(); }
    /// Drags from the left edge of one character to the left edge of another.
    void drag(qint64 from, qint64 to) const
    {
        QWidget *viewport = text().viewport();
        const auto edge = [&](qint64 position) {
            const QRect box = text().characterRectangle(position);
            return QPoint(box.left() + 1, box.center().y());
        };
        QTest::mousePress(viewport, Qt::LeftButton, {}, edge(from));
        QTest::mouseMove(viewport, (edge(from) + edge(to)) / 2);
        QTest::mouseMove(viewport, edge(to));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, edge(to));
        QApplication::processEvents();
    }

    TestLibrary library;

private:
    std::unique_ptr<RootView> m_root;
};
