#pragma once

#include "records/TextRange.h"
#include "surface/PassageSegments.h"
#include "surface/ReadingPlace.h"

#include <QBasicTimer>
#include <QList>
#include <QTextEdit>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

class LazyTextLayout;
class QMenu;

/// The read-only text that shows coded passages and in which passages are selected. `apply` sets what is shown; signals
/// report what the user does. All positions are UTF-16 code units in the text as it was given.
///
/// Colours come from the palette: Base, Text, Link for find matches, and Highlight, which is painted over the passages'
/// colours and therefore should be translucent.
class CodingTextView final : public QTextEdit {
    Q_OBJECT
public:
    struct Content {
        QString text;
        QList<TextHighlight> highlights; ///< in drawing order: where two overlap, the later one is seen
        qint64 resetToken = 0; ///< a changed value clears the selection
        std::optional<TextRange> revealRange; ///< to be scrolled to and flashed
        qint64 revealToken = 0; ///< a changed value reveals `revealRange`
    };
    /// Runs the job once after the delay, unless the view has been destroyed by then.
    using RunLater = std::function<void(std::chrono::milliseconds delay, std::function<void()> job)>;

    explicit CodingTextView(QWidget *parent = nullptr);
    ~CodingTextView() override;

    /// The document's text as it was given.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] TextRange selection() const;
    [[nodiscard]] const std::vector<TextRange> &findMatches() const { return m_marks.findMatches; }
    /// A character's rectangle in the viewport's coordinates. It may lie outside the viewport.
    [[nodiscard]] QRect characterRectangle(qint64 position) const;
    /// The character under a point of the viewport, or the nearest one.
    [[nodiscard]] qint64 characterAt(QPoint point) const;
    /// The line on which a character is seen.
    [[nodiscard]] TextRange lineAt(qint64 position) const;
    /// The menu for a click on that character. The caller owns it.
    [[nodiscard]] QMenu *createContextMenu(qint64 position);

    /// Shows the content. A new text scrolls to the top, a reveal to its range; nothing else scrolls.
    void apply(const Content &content);
    /// Selects without scrolling. The range is cut to the text.
    void select(TextRange range);
    /// Scrolls the smallest amount that brings the range into view.
    void scrollTo(TextRange range);
    /// Outlines the ranges until the next call or the next text. Ranges that don't lie inside the text are left out.
    void setFindMatches(std::vector<TextRange> matches);
    void selectFindMatch(size_t index);
    /// Replaces the single-shot timer that ends a flash.
    void setRunLater(RunLater runLater);

Q_SIGNALS:
    /// After each change of the selection, whatever its cause; at most once for each `apply`, at its end.
    void selectedRangeChanged(TextRange selection);
    /// "Add Code…" was chosen in the context menu, which offers it only if this signal is connected.
    void addCodeRequested();
    void removeCodingRequested(QUuid codingID);

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void timerEvent(QTimerEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] LazyTextLayout &layout() const;

    void applyTo(const Content &content);
    void replaceText(const QString &text);
    void makeDocument(const QString &text);
    void applyHighlights(const QList<TextHighlight> &highlights);
    void flash(TextRange range);
    [[nodiscard]] QColor flashColor(TextRange range) const;
    void endFlash();

    [[nodiscard]] TextRange cut(TextRange range) const;
    void noticeSelection();
    void selectWholeParagraph(const QTextCursor &before);
    void showCaret(bool isShown);
    void followCaret();
    [[nodiscard]] bool scrollsAt(QPoint point) const;

    /// Lets `change` set sizes, scroll bars or the place, and shows the text at its place afterwards.
    void keepingPlace(const std::function<void()> &change);
    void settle();
    void showPlace();
    void noticeHeights();
    [[nodiscard]] TextRange visibleStretch() const;
    void repaint(TextRange range);

    QString m_text;
    TextMarks m_marks;
    std::optional<ReadingPlace> m_place;
    qint64 m_appliedResetToken = 0;
    qint64 m_appliedRevealToken = -1;
    qint64 m_flashCount = 0;
    TextRange m_reportedSelection;
    RunLater m_runLater;
    QBasicTimer m_dragTimer;
    QPoint m_dragPoint; ///< where the pointer was last, in the viewport's coordinates
    int m_scrollValue = 0; ///< where `m_place` was last shown
    bool m_isApplying = false;
    bool m_isSettling = false; ///< while the scroll bar is set by this class and not by the user
    bool m_isUnsettled = false; ///< heights have changed since `settle`
    bool m_showsCaret = false;
};

/// Gives assistive technologies an interface to every `CodingTextView` that is created from now on. To be called before
/// the first one is: Qt's interface for a text edit, which it would get else, reads the laid-out document instead of
/// the given text, and lays all of it out.
void installAccessibleCodingText();
