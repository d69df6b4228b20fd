#include "workspace/reader/DocumentHeader.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Pill.h"
#include "kit/theme/Fonts.h"
#include "platform/LocaleText.h"
#include "records/Document.h"
#include "workspace/reader/SelectableTitle.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int lineSpacing = 8;
constexpr int factSpacing = 6;

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
