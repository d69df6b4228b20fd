#include "workspace/sheets/PasteSheet.h"

#include "kit/controls/Paragraph.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "records/LongestName.h"
#include "workspace/sheets/PasteEditor.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 560;
constexpr int padding = Metrics::dialogPadding + 1; // and the edge
constexpr int spacing = 16;
constexpr int fieldSpacing = 8;
constexpr int titleHeight = 18;

} // namespace

PasteSheet::PasteSheet(LibraryStore &store, QWidget &window)
    : Sheet(window, sheetWidth),
      m_store(store),
      m_title(new QLineEdit(this)),
      m_text(new PasteEditor(this))
{
    setWindowTitle(u"Paste a Document"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(spacing);
    column->addWidget(new Paragraph(u"Paste a Document"_s, Fonts::headline(), Symbols::Tint::text, titleHeight, this));
    addFields(*column);
    addButtons(*column);
    m_text->setFocus();

    const auto renderButton = [this] { m_add->setEnabled(!m_text->isBlank()); };
    connect(m_text, &QPlainTextEdit::textChanged, this, renderButton);
    renderButton();
}

void PasteSheet::addFields(QVBoxLayout &column)
{
    m_title->setObjectName(u"pasteTitle"_s);
    m_title->setMaxLength(longestName); // a field by itself cuts what is pasted much earlier, silently
    m_title->setPlaceholderText(u"Title (optional)"_s);
    m_title->setAccessibleName(u"Title"_s);
    m_text->setObjectName(u"pasteText"_s);
    m_text->setAccessibleName(u"Text"_s);
    auto *fields = new QVBoxLayout;
    fields->setSpacing(fieldSpacing);
    fields->addWidget(m_title);
    fields->addWidget(m_text, 1);
    column.addLayout(fields);
}

void PasteSheet::addButtons(QVBoxLayout &column)
{
    auto *cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"cancel"_s);
    cancel->setAutoDefault(false); // Return always means the other one
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_add = new QPushButton(u"Add"_s, this);
    m_add->setObjectName(u"add"_s);
    m_add->setDefault(true);
    setRole(*m_add, ButtonRole::prominent);
    connect(m_add, &QPushButton::clicked, this, &PasteSheet::addDocument);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Metrics::controlSpacing);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(m_add);
    column.addLayout(buttons);
}

/// The text isn't anywhere else: the sheet stays with it when it couldn't be stored.
void PasteSheet::addDocument()
{
    if (m_store.addPastedDocument(m_title->text(), m_text->text()))
        accept();
}
