#pragma once

#include "surface/CodingTextView.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>

#include <vector>

/// A text surface in a window of its own, with the clock in the test's hands.
class ShownCodingText {
public:
    explicit ShownCodingText(const QString &text = {})
    {
        view.setRunLater([this](auto, auto job) { later.push_back(std::move(job)); });
        QObject::connect(&view, &CodingTextView::selectedRangeChanged, &view,
            [this](TextRange range) { reported.push_back(range); });
        view.resize(760, 500);
        view.show();
        [[maybe_unused]] const bool isShown = QTest::qWaitForWindowExposed(&view);
        showText(text);
        QApplication::processEvents();
    }

    void apply() { view.apply(content); }
    void showText(const QString &text)
    {
        content.text = text;
        apply();
    }
    void reveal(TextRange range)
    {
        content.revealRange = range;
        ++content.revealToken;
        apply();
    }
    [[nodiscard]] int scrolled() const { return view.verticalScrollBar()->value(); }
    void scrollTo(int value)
    {
        view.verticalScrollBar()->setValue(value);
        QApplication::processEvents();
    }
    /// A point on the left half of a character.
    [[nodiscard]] QPoint pointAt(qint64 position) const
    {
        const QRect rectangle = view.characterRectangle(position);
        return {rectangle.left() + rectangle.width() / 4, rectangle.center().y()};
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    [[nodiscard]] QImage picture()
    {
        QApplication::processEvents();
        return view.viewport()->grab().toImage();
    }
    /// The colour of the page just above the letters, behind a character.
    [[nodiscard]] QColor colorBehind(qint64 position)
    {
        const QRect rectangle = view.characterRectangle(position);
        return picture().pixelColor(rectangle.center().x(), rectangle.top());
    }

    const bool isAccessible = (installAccessibleCodingText(), true); // before the view is made
    CodingTextView view;
    CodingTextView::Content content;
    std::vector<TextRange> reported;
    std::vector<std::function<void()>> later;
};
