#pragma once

#include "kit/controls/Popover.h"
#include "records/Document.h"
#include "records/TextRange.h"

class Capsule;
class LibraryStore;
class Paragraph;
struct Code;
class PickerModel;
class QLineEdit;
class QListView;

/// A small list over the selected passage: one field that filters the codes and names a new one. Return or a click
/// codes the passage, creating the code first where there is none of that name.
class CodePickerPopover final : public Popover {
    Q_OBJECT

public:
    CodePickerPopover(LibraryStore &store, Document document, TextRange selection, QWidget &window);

    /// Opens above the bar, with its arrow on the button and the focus in its field.
    void openAt(const Capsule &bar, const QWidget &button);

Q_SIGNALS:
    /// The passage has been coded.
    void assigned();

private:
    void buildLayout();
    void render();
    void fitList();
    void choose(const QModelIndex &index);
    void submit();
    [[nodiscard]] bool createAndAssign();
    void assign(const Code &code);

    LibraryStore &m_store;
    Document m_document;
    TextRange m_selection;
    PickerModel *m_model;
    QLineEdit *m_field;
    QListView *m_list;
    Paragraph *m_message;
};
