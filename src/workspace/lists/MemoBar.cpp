#include "workspace/lists/MemoBar.h"

#include "kit/controls/PlainButton.h"
#include "kit/controls/TextWrapping.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"
#include "platform/UnpairedSurrogates.h"
#include "records/TextTrimming.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QInputMethod>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyle>
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

/// "Memo" with its icon. The editor has the name for screen readers.
class MemoLabel final : public QWidget {
public:
    MemoLabel(QString label, QWidget *parent) : QWidget(parent), m_label(std::move(label))
    {
        setFont(Fonts::caption());
        setFixedHeight(std::max(labelHeight, fontMetrics().height()));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QColor &color = Theme::colors().secondary;
        const auto placed = [this](const QRect &part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
        const QRect icon(MemoBar::labelInset, (height() - iconSide) / 2, iconSide, iconSide);
        const QRect text = rect().adjusted(icon.right() + 1 + iconGap, 0, 0, 0);
        Symbols::paint(painter, placed(icon), u"note.text"_s, color, Symbols::semiboldStroke);
        painter.setPen(color);
        painter.drawText(
            placed(text), int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter)), m_label);
    }

private:
    QString m_label;
};

/// The units of an editor as they come back from the file: lines end in one way, and no half of a pair stands alone.
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
        setWordWrapMode(TextWrapping::modeFor({}));
        setViewportMargins(editorSidePadding, editorVerticalPadding, editorSidePadding, editorVerticalPadding);
        document()->setDocumentMargin(documentMargin);
        viewport()->setAutoFillBackground(false); // the frame fills its round corners
    }

    void showMemo(const QString &text)
    {
        clear(); // or what was there would be laid out once more
        setWordWrapMode(TextWrapping::modeFor(text));
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
        setWordWrapMode(TextWrapping::modeFor(text)); // before it is laid out
        QTextEdit::insertFromMimeData(&inserted);
    }
};

/// Lines are a little further apart than the font wants them. New paragraphs inherit it.
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
    connect(m_button, &QPushButton::clicked, this, &MemoBar::expand);
    connect(m_edit, &QTextEdit::textChanged, this, &MemoBar::takeText);
    showFitting(Pace::atOnce);
}

QWidget *MemoBar::makeEditor()
{
    auto *editor = new QWidget(this);
    m_edit = new MemoEditor(editor);
    m_edit->setObjectName(u"memo"_s);
    m_edit->setAccessibleName(u"Memo"_s);
    auto *column = new QVBoxLayout(editor);
    column->setContentsMargins(0, paddingAbove, 0, paddingBelow);
    column->setSpacing(labelGap);
    column->addWidget(new MemoLabel(u"Memo"_s, editor));
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

/// A word in the making is no text yet, though it may have replaced all there was.
bool MemoBar::isComposing() const
{
    const QTextLayout *layout = m_edit->textCursor().block().layout();
    return layout != nullptr && !layout->preeditAreaText().isEmpty();
}

void MemoBar::setText(const QString &text)
{
    m_text = text;
    writeIntoEditor();
    showFitting(Pace::atOnce);
}

void MemoBar::finish()
{
    if (m_isFinishing) // an input method may still have a word that it has just sent
        return;
    const QScopedValueRollback finishing(m_isFinishing, true);
    if (m_edit->hasFocus())
        QGuiApplication::inputMethod()->commit();
    commit();
}

/// Who hears of it may show another memo here.
void MemoBar::commit()
{
    const QString text = m_text;
    Q_EMIT committed(text);
}

void MemoBar::writeIntoEditor()
{
    const QSignalBlocker quietly(m_edit); // some input methods commit what they are told to forget
    if (m_edit->hasFocus())
        QGuiApplication::inputMethod()->reset();
    static_cast<MemoEditor *>(m_edit)->showMemo(m_text);
    spreadLines(*m_edit->document(), m_edit->font());
    m_edit->document()->clearUndoRedoStacks();
}

void MemoBar::takeText()
{
    const QString units = m_edit->document()->toRawText(); // unlike plain text with its no-break spaces
    const QString text = asStored(units);
    keepAsStored(units, text);
    if (text == m_text)
        return;
    m_text = text;
    commit();
    showFitting(Pace::fading);
}

/// What is shown stays what is stored, to the unit, also when it's undone.
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
    const bool showsEditor = m_isExpanded || hasContent() || isComposing();
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
