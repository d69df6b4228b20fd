#pragma once

#include "kit/lists/RowList.h"

class CodeChoiceDelegate;
class CodeChoiceModel;

/// Toggle rows, one for each code. A click or Space toggles a row; Return is left to the sheet. As high as its rows, up
/// to a limit, beyond which it scrolls.
class CodeChoiceList final : public RowList {
    Q_OBJECT

public:
    /// `model` must outlive this.
    explicit CodeChoiceList(CodeChoiceModel &model, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void fit();
    void toggle(const QModelIndex &index);

    CodeChoiceModel &m_model;
    CodeChoiceDelegate *m_delegate;
};
