#pragma once

#include "records/TextRange.h"
#include "surface/ReadingPlace.h"
#include "surface/TextHighlight.h"
#include "surface/TextMarks.h"

#include <QList>
#include <QTextEdit>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

class LazyTextLayout;
class QMenu;

/// The read-only text in which passages are selected and seen. It learns everything through `apply` and tells
/// everything by signals. All positions are UTF-16 code units in the text it was given, whatever that text holds.
///
/// Colours come from the palette: Base, Text, Link for find matches, and Highlight, which is laid over the passages'
/// colours and therefore should be translucent.
class CodingTextView final : public QTextEdit {
    Q_OBJECT
public:
    struct Content {
        QString text;
        QList<TextHighlight> highlights; ///< in drawing order: the later one shows where two overlap
        qint64 resetToken = 0; ///< a new one clears the selection
        std::optional<TextRange> revealRange; ///< to be scrolled to and flashed
        qint64 revealToken = 0; ///< a new one asks for `revealRange` to be revealed
    };
    /// Runs the job later, once, unless the view is gone by then.
    using RunLater = std::function<void(std::chrono::milliseconds delay, std::function<void()> job)>;

    explicit CodingTextView(QWidget *parent = nullptr);
    ~CodingTextView() override;

    /// The document's text as it was given.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] TextRange selection() const;
    [[nodiscard]] const std::vector<TextRange> &findMatches() const { return m_marks.findMatches; }
    /// The find match that is selected.
    [[nodiscard]] std::optional<size_t> currentFindMatch() const;
    /// Where a character is seen, in the viewport's coordinates. It may lie outside the viewport.
    [[nodiscard]] QRect characterRectangle(qint64 position) const;
    /// The character under a point of the viewport, or the nearest one.
    [[nodiscard]] qint64 characterAt(QPoint point) const;
    /// The line on which a character is seen.
    [[nodiscard]] TextRange lineAt(qint64 position) const;
    /// The menu for a click on that character. The caller owns it.
    [[nodiscard]] QMenu *createContextMenu(qint64 position);

    /// Shows the content. Only a new text scrolls to the top; nothing else but a reveal scrolls at all.
    void apply(const Content &content);
    /// Selects without scrolling. The range is cut to the text.
    void select(TextRange range);
    /// Scrolls the smallest amount that brings the range into view.
    void scrollTo(TextRange range);
    /// Outlines the ranges until the next call or the next text. What doesn't lie inside the text is left out.
    void setFindMatches(std::vector<TextRange> matches);
    void selectFindMatch(size_t index);
    /// How a flash ends in time; a single-shot timer if none is set.
    void setRunLater(RunLater runLater);

Q_SIGNALS:
    /// After each change of the selection, whatever its cause. Inside `apply` once, at its end.
    void selectedRangeChanged(TextRange selection);
    /// "Add Code…" was chosen. It is offered only if this is connected.
    void addCodeRequested();
    void removeCodingRequested(QUuid codingID);

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] LazyTextLayout &layout() const;

    void applyTo(const Content &content);
    void replaceText(const QString &text);
    void showDocumentOf(const QString &text);
    void applyHighlights(const QList<TextHighlight> &highlights);
    void flash(TextRange range);
    [[nodiscard]] QColor flashColor(TextRange range) const;
    void restoreAfterFlash(qint64 number);
    void endFlash();

    [[nodiscard]] TextRange cut(TextRange range) const;
    void noticeSelection();
    void selectWholeParagraph(const QTextCursor &before);
    void showCaret(bool isShown);
    void followCaret();

    /// Lets the base class change sizes and scroll bars, and brings the text back to its place afterwards.
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
    int m_scrollValue = 0; ///< where `m_place` was last shown
    bool m_isApplying = false;
    bool m_isSettling = false; ///< scroll bars move by our own doing
    bool m_isUnsettled = false;
    bool m_showsCaret = false;
};
