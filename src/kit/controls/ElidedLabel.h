#pragma once

#include "kit/theme/Symbols.h"

#include <QLabel>

/// One line of text that ends in "…" where there is no room for it, and shows itself whole in a tool tip then. Follows
/// the look by itself.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    ElidedLabel(const QString &text, const QFont &font, Symbols::Tint tint, QWidget *parent = nullptr);

    [[nodiscard]] bool isElided() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// Line breaks are shown as blanks.
    void setText(const QString &text);
    void setElideMode(Qt::TextElideMode mode);
    /// Takes the room of this text even when the shown one is narrower, so that changing counts don't twitch.
    void reserveRoomFor(const QString &widest);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QString m_shown; ///< as much of the text as there may be room for
    QString m_widest;
    Symbols::Tint m_tint;
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
};
