#pragma once

#include "records/Coding.h"
#include "records/Document.h"
#include "surface/PassageSegments.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class CodePickerPopover;
class CodingHint;
class CodingTextView;
class DocumentHeader;
class FindBar;
class LibraryStore;
class MemoBar;
class SelectionBar;

/// Shows one document to read and to code: header, memo and text. One view serves all documents in turn.
class ReaderView final : public QWidget {
    Q_OBJECT

public:
    explicit ReaderView(LibraryStore &store, QWidget *parent = nullptr);

    /// The passage that "Add Code" would code.
    [[nodiscard]] const std::optional<TextRange> &selection() const { return m_selection; }

    void showDocument(const Document &document);
    void showNothing();
    void openFindBar();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void buildLayout();
    void connectStore();
    void beginDocument();
    void saveMemo(const QString &memo);
    void renderMemo();
    void readCodings();
    void renderCodings();
    void renderText();
    void renderHint();
    void placeOverlays();
    void noticeSelection(TextRange range);
    void renderSelectionBar();
    void setSelection(const std::optional<TextRange> &selection);
    void openPicker();
    void closePicker();
    void finishAssignment();
    void removeCoding(const QUuid &codingID);

    LibraryStore &m_store;
    std::optional<Document> m_document;
    QList<Coding> m_codings;
    QList<TextHighlight> m_highlights;
    std::optional<TextRange> m_selection;
    qint64 m_resetToken = 0;

    DocumentHeader *m_header;
    MemoBar *m_memo;
    QWidget *m_divider;
    FindBar *m_findBar;
    CodingTextView *m_text;
    SelectionBar *m_selectionBar;
    CodingHint *m_hint;
    QPointer<CodePickerPopover> m_picker;
};
