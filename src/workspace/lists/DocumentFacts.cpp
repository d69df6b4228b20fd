#include "workspace/lists/DocumentFacts.h"

#include "platform/LocaleText.h"
#include "records/Document.h"

#include <QCoreApplication>

QString DocumentFacts::inOneLine(const Document &document)
{
    return QCoreApplication::translate("DocumentFacts", "%1 words · %2")
        .arg(LocaleText::number(document.wordCount), LocaleText::monthAndDay(document.addedAt));
}
