#pragma once

#include <QWidget>

#include <functional>

class ElidedLabel;
class PlainButton;
class QHBoxLayout;
class QVBoxLayout;

/// A view of the middle column: a head with its title, and below it whatever the view lists. Reads the store only while
/// it is visible, or as soon as it is.
class ListColumn : public QWidget {
    Q_OBJECT

public:
    explicit ListColumn(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    /// Gives the focus to the list that is shown, at its current or first row, or where nothing is listed to the first
    /// button.
    void takeFocus(Qt::FocusReason reason);

protected:
    using Action = std::function<void()>;

    /// Shows what the store holds now. Called through `invalidate` only.
    virtual void render() = 0;
    /// Call it when something that is shown may have changed: renders now, or as soon as the view is visible.
    void invalidate();

    [[nodiscard]] QHBoxLayout &head() const { return *m_head; }
    [[nodiscard]] QVBoxLayout &body() const { return *m_body; }
    /// Puts a title at the left of the head.
    ElidedLabel *addTitle(const QString &title);
    /// The button that leads back to the documents; not in a layout yet.
    PlainButton *makeBackButton(Action goBack);
    /// Puts that button into the head, for a view without a title.
    void addBackButton(Action goBack);
    /// Makes the head lower by that many logical pixels at its lower end, without moving what is in it.
    void shortenHead(int by);
    /// A row for a back button, with its icon where the column's texts begin. Has no parent yet.
    [[nodiscard]] static QHBoxLayout *makeBackRow(PlainButton &button);
    /// Adds a row with the button back to the documents to `column`, close below the head.
    void addBackRow(Action goBack, QVBoxLayout &column);

    void showEvent(QShowEvent *event) override;

private:
    QHBoxLayout *m_head;
    QVBoxLayout *m_body;
    bool m_isStale = true;
};
