#include "workspace/sheets/PasteSheet.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "library/LibraryStore.h"
#include "records/TextTrimming.h"

#include <QLineEdit>
#include <QPlainTextDocumentLayout>
#include <QPushButton>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int minHeight = 232;
constexpr int verticalPadding = 5;
constexpr int sidePadding = 6;
constexpr int documentMargin = 2;
constexpr int lineHeight = 19;

/// Makes each line at least `lineHeight` high, which Qt's layout for plain text can't.
class SpreadLayout final : public QPlainTextDocumentLayout {
public:
    using QPlainTextDocumentLayout::QPlainTextDocumentLayout;

    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &block) const override
    {
        QRectF rect = QPlainTextDocumentLayout::blockBoundingRect(block);
        if (!rect.isEmpty())
            rect.setHeight(spread(*block.layout()) + (block.next().isValid() ? 0 : document()->documentMargin()));
        return rect;
    }

private:
    /// Returns the height of the lines together.
    static double spread(const QTextLayout &layout)
    {
        double top = 0;
        for (int index = 0; index < layout.lineCount(); ++index) {
            QTextLine line = layout.lineAt(index);
            const double height = std::max(double(lineHeight), std::ceil(line.height()));
            line.setPosition({line.x(), top + std::floor((height - line.height()) / 2)});
            top += height;
        }
        return top;
    }
};

constexpr int sheetWidth = 560;
constexpr int fieldSpacing = 8;

} // namespace

PasteEditor::PasteEditor(QWidget *parent) : QPlainTextEdit(parent)
{
    setFont(Fonts::body());
    document()->setDefaultFont(Fonts::body());
    document()->setDocumentLayout(new SpreadLayout(document()));
    document()->setDocumentMargin(documentMargin);
    setViewportMargins(sidePadding, verticalPadding, sidePadding, verticalPadding);
    viewport()->setAutoFillBackground(false); // the style fills the rounded frame
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setMinimumHeight(minHeight);
}

QString PasteEditor::text() const
{
    QString text = document()->toRawText(); // toPlainText turns no-break spaces into spaces
    std::ranges::replace(text, QChar(QChar::ParagraphSeparator), u'\n');
    return text;
}

bool PasteEditor::isBlank() const
{
    const int end = document()->characterCount() - 1;
    int position = 0;
    const auto isBlankAt = [this](int at) {
        const char16_t unit = document()->characterAt(at).unicode();
        return TextTrimming::isBlank(unit) || TextTrimming::isLineBreak(unit);
    };
    while (position < end && isBlankAt(position))
        ++position;
    return position >= end;
}

FocusOutline PasteEditor::focusOutline() const
{
    return {rect(), Metrics::popoverRadius, FocusOutline::Mark::halo};
}

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
