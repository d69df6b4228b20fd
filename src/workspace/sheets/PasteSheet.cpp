#include "workspace/sheets/PasteSheet.h"

#include "kit/theme/Metrics.h"
#include "library/LibraryStore.h"
#include "records/NameLength.h"
#include "workspace/sheets/PasteEditor.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 560;
constexpr int fieldSpacing = 8;

} // namespace

PasteSheet::PasteSheet(LibraryStore &store, QWidget &window)
    : FormSheet(window, u"Paste a Document"_s, sheetWidth, Metrics::dialogPadding),
      m_store(store),
      m_title(new QLineEdit(this)),
      m_text(new PasteEditor(this))
{
    m_title->setObjectName(u"pasteTitle"_s);
    m_title->setMaxLength(maxNameLength); // the default limit cuts what is pasted much earlier, silently
    m_title->setPlaceholderText(u"Title (optional)"_s);
    m_title->setAccessibleName(u"Title"_s);
    m_text->setObjectName(u"pasteText"_s);
    m_text->setAccessibleName(u"Text"_s);
    auto *fields = new QVBoxLayout;
    fields->setSpacing(fieldSpacing);
    fields->addWidget(m_title);
    fields->addWidget(m_text, 1);
    rows().addLayout(fields, 1);
    m_text->setFocus();

    auto *add = addButtons(u"add"_s, u"Add"_s);
    const auto renderButton = [this, add] { add->setEnabled(!m_text->isBlank()); };
    connect(m_text, &QPlainTextEdit::textChanged, add, renderButton);
    renderButton();
}

/// The sheet stays open when the text couldn't be stored: it may exist nowhere else.
void PasteSheet::act()
{
    if (m_store.addPastedDocument(m_title->text(), m_text->text()))
        accept();
}
