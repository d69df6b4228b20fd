#pragma once

#include <QWidget>

#include <functional>

class ElidedLabel;
class PlainButton;
class QHBoxLayout;
class QVBoxLayout;

/// A view of the middle column: a head with its title, and below it whatever the view lists. Reads the store only while
/// it can be seen, and makes up for it when it is shown.
class ListColumn : public QWidget {
    Q_OBJECT

public:
    explicit ListColumn(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    using Action = std::function<void()>;

    /// Shows what the store holds now. Called through `invalidate` only.
    virtual void render() = 0;
    /// To be called when something that is shown may have changed: renders now, or as soon as the view is visible.
    void invalidate();

    [[nodiscard]] QHBoxLayout &head() const { return *m_head; }
    [[nodiscard]] QVBoxLayout &body() const { return *m_body; }
    /// Puts a title at the left of the head.
    ElidedLabel *addTitle(const QString &title);
    /// The way back to the documents; without a place yet.
    PlainButton *makeBackButton(Action goBack);
    /// Puts that button into the head of a view that has no title.
    void addBackButton(Action goBack);
    /// Takes that many logical pixels from the head's lower end; what stands in it stays where it is.
    void shortenHead(int by);
    /// The row of a way back, with the button's icon where the lines begin. Has no parent yet.
    [[nodiscard]] static QHBoxLayout *makeBackRow(PlainButton &button);
    /// Puts that button as a row of its own on top of `column`, close under the head.
    void addBackRow(Action goBack, QVBoxLayout &column);

    void showEvent(QShowEvent *event) override;

private:
    QHBoxLayout *m_head;
    QVBoxLayout *m_body;
    bool m_isStale = true;
};
