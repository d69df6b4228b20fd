#pragma once

#include <QLineEdit>

/// A field in place of a row's name. It stays open, with its text, until Return or Escape is pressed in it; losing the
/// focus means nothing. Its owner places it over the row and shows it as long as the row is there.
class InlineField final : public QLineEdit {
    Q_OBJECT

public:
    /// Gives the focus to `list`, on which it lies, when it closes.
    InlineField(const QString &placeholder, QWidget &list, QWidget *parent);

    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    void open(const QString &draft);
    void close();
    /// Lays the field's text over the name in `name`, or hides the field when that is empty.
    void place(const QRect &name);

Q_SIGNALS:
    void committed();
    void cancelled();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int textMargin() const;

    QWidget &m_list;
    bool m_isOpen = false;
    bool m_cameByKeyboard = false;
};
