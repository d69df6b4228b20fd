#pragma once

#include "kit/controls/Popover.h"
#include "kit/lists/ListModel.h"
#include "records/Code.h"
#include "records/Document.h"
#include "records/TextRange.h"

#include <QList>

#include <optional>

class Capsule;
class LibraryStore;
class Paragraph;
class RowList;
class QLineEdit;

/// A code to choose, or the name of one to create.
struct PickerRow {
    std::optional<Code> code = {};
    QString name = {}; ///< of a code that isn't there yet
    qint64 count = 0; ///< the code's passages

    bool operator==(const PickerRow &) const = default;
};

/// A field that filters the codes or names a new one, over a list of the codes. Return or a click codes the selected
/// passage, and creates the code first if there is none of that name.
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
    [[nodiscard]] std::optional<QString> creatableName() const;
    [[nodiscard]] QList<PickerRow> rows() const;
    void assign(const Code &code);

    LibraryStore &m_store;
    Document m_document;
    TextRange m_selection;
    ListModel<QList<PickerRow>> *m_model;
    QLineEdit *m_field;
    RowList *m_list;
    Paragraph *m_message;
};
