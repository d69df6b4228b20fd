#pragma once

#include "kit/controls/Sheet.h"

class QPushButton;
class QVBoxLayout;

/// A sheet that asks for something: a title over rows of controls, and below them Cancel and the button that acts.
/// Return presses that button from wherever it isn't taken by the control in focus.
class FormSheet : public Sheet {
    Q_OBJECT

protected:
    /// `padding` is inside the sheet's edge; `purpose` is a line below the title.
    FormSheet(QWidget &window, const QString &title, int width, int padding, const QString &purpose = {});

    /// Where rows are added, with the padding at both sides.
    [[nodiscard]] QVBoxLayout &rows() const { return *m_rows; }
    /// Below the rows, from edge to edge.
    [[nodiscard]] QVBoxLayout &column() const { return *m_column; }
    /// A label before the control, which screen readers hear as its name, too. The control's parent is the row.
    void addRow(const QString &label, QWidget *control);
    /// To be called last, so that Tab reaches the buttons last. `beside` stands at the left of them.
    QPushButton *addButtons(const QString &objectName, const QString &label, QWidget *beside = nullptr);

    /// The answer to the button that acts.
    virtual void act() = 0;

private:
    const int m_padding;
    QVBoxLayout *m_column;
    QVBoxLayout *m_rows;
};
