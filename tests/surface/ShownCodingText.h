#pragma once

#include "surface/CodingTextView.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>

#include <utility>
#include <vector>

/// A text surface in a window of its own, with the clock in the test's hands.
class ShownCodingText {
public:
    explicit ShownCodingText(const QString &text, QSize size = {760, 500})
    {
        view.setRunLater([this](std::chrono::milliseconds delay, std::function<void()> job) {
            later.emplace_back(delay, std::move(job));
        });
        QObject::connect(&view, &CodingTextView::selectedRangeChanged, &view,
            [this](TextRange range) { reported.push_back(range); });
        view.resize(size);
        view.show();
        [[maybe_unused]] const bool isShown = QTest::qWaitForWindowExposed(&view);
        content.text = text;
        apply();
        QApplication::processEvents();
    }

    void apply() { view.apply(content); }
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
    void click(qint64 position, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, pointAt(position));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    [[nodiscard]] QString selectedText() const
    {
        return content.text.mid(view.selection().location, view.selection().length);
    }
    [[nodiscard]] QImage picture()
    {
        QApplication::processEvents();
        return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    [[nodiscard]] QColor colorAt(QPoint point)
    {
        const QImage image = picture();
        return image.pixelColor(point * image.devicePixelRatio());
    }

    const bool isAccessible = (installAccessibleCodingText(), true); // before the view is made
    CodingTextView view;
    CodingTextView::Content content;
    std::vector<TextRange> reported;
    std::vector<std::pair<std::chrono::milliseconds, std::function<void()>>> later;
};
