#pragma once

#include <QWidget>

#include <optional>

class CodingTextView;
class ElidedLabel;
class QPushButton;
class SearchField;

/// Searches the document while a text is typed: marks and counts all matches and selects the next or previous one,
/// starting over at either end.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(CodingTextView &text, QWidget *parent = nullptr);

    /// Shows the bar, with the focus in its field and the field's text selected.
    void open();
    void close();
    /// Searches the text of another document, without selecting a match.
    void textChanged();

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Marks the matches and selects the one at the caret.
    void search();
    void markMatches();
    [[nodiscard]] size_t matchAtPlace() const;
    void step(int direction);
    void select(size_t index);
    void showCount();

    CodingTextView &m_text;
    SearchField *m_field;
    ElidedLabel *m_count;
    QPushButton *m_previous;
    QPushButton *m_next;
    std::optional<size_t> m_current;
};
