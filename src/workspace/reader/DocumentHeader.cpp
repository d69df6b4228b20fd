#include "workspace/reader/DocumentHeader.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"
#include "platform/LocaleText.h"
#include "records/Document.h"
#include "workspace/reader/SelectableTitle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineSpacing = 8;
constexpr int factSpacing = 6;

/// A short word in a round tint. Its font shows it in upper case.
class Pill final : public QLabel {
public:
    Pill()
    {
        setFont(Fonts::pill());
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        constexpr int padding = 7;
        constexpr int minHeight = 17;
        const QFontMetrics metrics = fontMetrics();
        return {metrics.horizontalAdvance(text()) + 2 * padding, std::max(minHeight, metrics.height() + 4)};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const ThemeColors &colors = Theme::colors();
        QPainter painter(this);
        Painting::fill(painter, rect(), height() / 2., colors.pill);
        if (colors.look.hasHighContrast)
            Painting::edge(painter, rect(), height() / 2., colors.accentForeground);
        painter.setPen(colors.secondary);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    }
};

} // namespace

DocumentHeader::DocumentHeader(QWidget *parent)
    : QWidget(parent),
      m_title(new SelectableTitle(Fonts::readerTitle())),
      m_kind(new Pill),
      m_facts(new ElidedLabel({}, Fonts::caption(), Symbols::Tint::secondary))
{
    m_title->setObjectName(u"documentTitle"_s);
    m_title->setAccessibleName(u"Document title"_s);
    m_facts->setObjectName(u"documentFacts"_s);

    auto *facts = new QHBoxLayout;
    facts->setSpacing(factSpacing);
    facts->addWidget(m_kind);
    facts->addWidget(m_facts, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(lineSpacing);
    column->addWidget(m_title);
    column->addLayout(facts);
}

void DocumentHeader::showDocument(const Document &document, qsizetype codingCount)
{
    m_title->setTitle(document.title);
    m_kind->setText(document.sourceKind);
    QString facts =
        LocaleText::number(document.wordCount) + u" words  ·  "_s + LocaleText::monthAndDay(document.addedAt);
    if (codingCount > 0)
        facts += u"  ·  "_s + LocaleText::number(codingCount) + u" coded"_s;
    m_facts->setText(facts);
}
