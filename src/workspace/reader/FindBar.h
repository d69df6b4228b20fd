#pragma once

#include <QWidget>

#include <optional>

class CodingTextView;
class ElidedLabel;
class QPushButton;
class SearchField;

/// Finds a text in the document, as it is typed: marks all matches, counts them, and goes from one to the next in both
/// directions, round and round. It selects, and never touches passages.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(CodingTextView &text, QWidget *parent = nullptr);

    /// Shows the bar with the focus in its field and what stands there selected.
    void open();
    void close();
    /// Looks again, since the document is another one. Nothing is selected or scrolled to.
    void textChanged();

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Marks the matches and goes to the one at the reader's place.
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
