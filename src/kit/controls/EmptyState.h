#pragma once

#include <QWidget>

class Paragraph;
class QPushButton;
class QVBoxLayout;

/// What a column shows while it has nothing to list: an icon, a title, some lines of explanation, and perhaps buttons
/// for a way out. The title stands where that of a neighbouring column would.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    /// `symbol` is a name of `Symbols`, shown `iconSize` logical pixels large.
    EmptyState(const QString &symbol, int iconSize, const QString &title, const QString &description = {},
        QWidget *parent = nullptr);

    void setTitle(const QString &title);
    /// Empty texts take no room.
    void setDescription(const QString &description);
    /// Adds a button below the others; all become as wide as the widest. Owned by this.
    void addButton(QPushButton *button);

protected:
    bool event(QEvent *event) override;

private:
    void placeTitle();

    const int m_aboveTitle; ///< from the icon's top edge, in logical pixels
    QVBoxLayout *m_column;
    QVBoxLayout *m_buttons;
    Paragraph *m_title;
    Paragraph *m_description;
};
