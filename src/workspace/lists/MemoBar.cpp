#include "workspace/lists/MemoBar.h"

#include "kit/controls/LongText.h"
#include "kit/controls/PlainButton.h"
#include "kit/controls/Transition.h"
#include "kit/lists/RowLine.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "platform/UnpairedSurrogates.h"
#include "records/TextTrimming.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int editorHeight = 80;
constexpr int editorSidePadding = 4;
constexpr int editorVerticalPadding = 2;
constexpr int documentMargin = 1;
constexpr int lineHeight = 17;
constexpr int labelHeight = 14;
constexpr int labelGap = 3;
constexpr int paddingAbove = 6;
constexpr int paddingBelow = 5;
constexpr int iconSide = 11;
constexpr int iconGap = 5;

/// "Memo" with its icon. Screen readers find the name at the editor.
class MemoLabel final : public QWidget {
public:
    explicit MemoLabel(QWidget *parent) : QWidget(parent)
    {
        setFont(Fonts::caption());
        setFixedHeight(std::max(labelHeight, fontMetrics().height()));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QColor &color = Theme::colors().secondary;
        QPainter painter(this);
        RowLine line(&painter, rect(), layoutDirection());
        line.skip(MemoBar::labelInset);
        line.symbol(u"note.text"_s, color, iconSide, iconGap, Symbols::semiboldStroke);
        line.text(u"Memo"_s, font(), color);
    }
};

/// An editor's text as it is stored: with line feeds, and without unpaired surrogates.
QString asStored(QString units)
{
    for (const QChar::SpecialCharacter separator : {QChar::ParagraphSeparator, QChar::LineSeparator})
        units.replace(separator, u'\n');
    return replaceUnpairedSurrogates(units);
}

class MemoEditor final : public QTextEdit {
public:
    explicit MemoEditor(QWidget *parent) : QTextEdit(parent)
    {
        setAcceptRichText(false);
        setTabChangesFocus(true);
        setFont(Fonts::memo());
        setFixedHeight(editorHeight);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWordWrapMode(LongText::wrapMode({}));
        setViewportMargins(editorSidePadding, editorVerticalPadding, editorSidePadding, editorVerticalPadding);
        document()->setDocumentMargin(documentMargin);
        viewport()->setAutoFillBackground(false); // the frame fills its round corners
    }

    void showMemo(const QString &text)
    {
        clear(); // or what was there would be laid out once more
        setWordWrapMode(LongText::wrapMode(text));
        setPlainText(text);
    }

protected:
    void insertFromMimeData(const QMimeData *source) override
    {
        const QTextCursor cursor = textCursor();
        QString text = document()->toRawText();
        QMimeData inserted;
        inserted.setText(asStored(source->text()));
        text.replace(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart(), inserted.text());
        setWordWrapMode(LongText::wrapMode(text)); // before it is laid out
        QTextEdit::insertFromMimeData(&inserted);
    }
};

/// Puts lines a little further apart than the font does. New paragraphs inherit it.
void spreadLines(QTextDocument &document, const QFont &font)
{
    QTextBlockFormat format;
    format.setLineHeight(std::max(0, lineHeight - QFontMetrics(font).height()), QTextBlockFormat::LineDistanceHeight);
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}

} // namespace

MemoBar::MemoBar(const QString &placeholder, QWidget *parent)
    : QWidget(parent),
      m_button(new PlainButton(u"note.text"_s, placeholder, this)),
      m_editor(makeEditor())
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_button, 0, Qt::AlignLeading);
    column->addWidget(m_editor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_edit->setAccessibleName(placeholder.chopped(1)); // of a code or a document, without the ellipsis
    connect(m_button, &QPushButton::clicked, this, &MemoBar::expand);
    connect(m_edit, &QTextEdit::textChanged, this, &MemoBar::takeText);
    showFitting(Pace::atOnce);
}

QWidget *MemoBar::makeEditor()
{
    auto *editor = new QWidget(this);
    m_edit = new MemoEditor(editor);
    m_edit->setObjectName(u"memo"_s);
    auto *column = new QVBoxLayout(editor);
    column->setContentsMargins(0, paddingAbove, 0, paddingBelow);
    column->setSpacing(labelGap);
    column->addWidget(new MemoLabel(editor));
    auto *row = new QHBoxLayout;
    row->addWidget(m_edit);
    column->addLayout(row);
    return editor;
}

void MemoBar::setEditorInset(int inset)
{
    auto *row = static_cast<QHBoxLayout *>(m_editor->layout()->itemAt(1)->layout());
    row->setContentsMargins(inset, 0, 0, 0);
}

bool MemoBar::hasContent() const
{
    return !TextTrimming::trimmed(m_text).isEmpty();
}

/// What an input method has in the making. It isn't part of the text yet, though it may have replaced all there was.
QString MemoBar::composedWord() const
{
    const QTextLayout *layout = m_edit->textCursor().block().layout();
    return layout != nullptr ? layout->preeditAreaText() : QString();
}

void MemoBar::setText(const QString &text)
{
    m_text = text;
    writeIntoEditor();
    showFitting(Pace::atOnce);
}

void MemoBar::finish()
{
    if (m_isFinishing) // committing a word ends here again
        return;
    const QScopedValueRollback finishing(m_isFinishing, true);
    if (m_edit->hasFocus())
        QGuiApplication::inputMethod()->commit();
    if (const QString word = composedWord(); !word.isEmpty()) { // not every input method does it
        QInputMethodEvent event;
        event.setCommitString(word);
        QCoreApplication::sendEvent(m_edit, &event);
    }
    commit();
}

/// Works on a copy, since a receiver may show another memo here.
void MemoBar::commit()
{
    const QString text = m_text;
    Q_EMIT committed(text);
}

void MemoBar::writeIntoEditor()
{
    const QSignalBlocker quietly(m_edit); // some input methods commit a word when they are reset
    if (m_edit->hasFocus())
        QGuiApplication::inputMethod()->reset();
    static_cast<MemoEditor *>(m_edit)->showMemo(m_text);
    spreadLines(*m_edit->document(), m_edit->font());
    m_edit->document()->clearUndoRedoStacks();
}

void MemoBar::takeText()
{
    const QString units = m_edit->document()->toRawText(); // toPlainText() would turn no-break spaces into blanks
    const QString text = asStored(units);
    keepAsStored(units, text);
    if (text == m_text)
        return;
    m_text = text;
    commit();
    showFitting(Pace::fading);
}

/// Replaces in the editor the units that are stored differently, as part of the same step of undoing.
void MemoBar::keepAsStored(const QString &units, const QString &text)
{
    std::vector<int> differing;
    for (int position = 0; position < units.size(); ++position) {
        if (units[position] != text[position] && units[position] != QChar::ParagraphSeparator)
            differing.push_back(position);
    }
    if (differing.empty())
        return;
    const QSignalBlocker quietly(m_edit);
    QTextCursor cursor(m_edit->document());
    cursor.joinPreviousEditBlock();
    for (const int position : differing) {
        cursor.setPosition(position);
        cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
        cursor.insertText(text.mid(position, 1));
    }
    cursor.endEditBlock();
}

void MemoBar::expand()
{
    m_isExpanded = true;
    showFitting(Pace::fading);
    m_edit->setFocus(Qt::OtherFocusReason);
}

void MemoBar::showFitting(Pace pace)
{
    const bool showsEditor = m_isExpanded || hasContent() || !composedWord().isEmpty();
    const bool hadFocus = m_edit->hasFocus();
    m_button->setVisible(!showsEditor);
    if (pace == Pace::atOnce)
        m_editor->setVisible(showsEditor);
    else if (showsEditor)
        Transition::fade().appear(*m_editor);
    else
        Transition::fade().disappear(*m_editor);
    if (hadFocus && !showsEditor)
        m_button->setFocus(Qt::OtherFocusReason);
}

void MemoBar::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous()) // the window is merely minimised
        return;
    commit();
    m_isExpanded = false;
    showFitting(Pace::atOnce);
}
