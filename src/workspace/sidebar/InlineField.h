#pragma once

#include <QLineEdit>

/// A field in place of a row's name. It stays open, with its text, until Return or Escape is pressed in it, even while
/// the focus is elsewhere. Its owner places it over the row.
class InlineField final : public QLineEdit {
    Q_OBJECT

public:
    /// Lies on `list`, which gets the focus when the field closes.
    InlineField(const QString &placeholder, QWidget &list, QWidget *parent);

    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    void open(const QString &draft);
    void close();
    /// Places the field so that its text covers the name in `name`; hides it if `name` is empty.
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
