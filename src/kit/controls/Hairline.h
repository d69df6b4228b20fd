#pragma once

#include <QWidget>

/// A line of one pixel between two parts of a surface.
class Hairline final : public QWidget {
    Q_OBJECT

public:
    enum class Place {
        surface, ///< between surfaces
        raised, ///< inside a menu, popover or sheet
    };

    explicit Hairline(
        Place place = Place::surface, Qt::Orientation orientation = Qt::Horizontal, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {1, 1}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Place m_place;
};
