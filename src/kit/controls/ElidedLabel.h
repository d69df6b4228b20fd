#pragma once

#include "kit/controls/Accessible.h"
#include "kit/theme/Symbols.h"

#include <QWidget>

/// One line of text that ends in "…" where there is no room for it, and shows itself whole in a tool tip then. Follows
/// the look by itself.
class ElidedLabel final : public QWidget, public HasAccessibleRole {
    Q_OBJECT

public:
    ElidedLabel(const QString &text, const QFont &font, Symbols::Tint tint, QWidget *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] bool isElided() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

    /// Line breaks are shown as blanks.
    void setText(const QString &text);
    void setElideMode(Qt::TextElideMode mode);
    void setAlignment(Qt::Alignment alignment);
    /// Takes the room of this text even when the shown one is narrower, so that changing counts don't twitch.
    void reserveRoomFor(const QString &widest);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString m_text;
    QString m_shown; ///< as much of it as there may be room for
    QString m_widest;
    Symbols::Tint m_tint;
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
    Qt::Alignment m_alignment = Qt::AlignLeft;
};
