#include "workspace/sidebar/CodeDrag.h"

#include <QMimeData>
#include <QString>

using namespace Qt::StringLiterals;

QString CodeDrag::mimeType()
{
    return u"text/plain"_s;
}

QMimeData *CodeDrag::mimeData(const QUuid &codeID)
{
    auto *data = new QMimeData;
    data->setText(codeID.toString(QUuid::WithoutBraces).toUpper());
    return data;
}

std::optional<QUuid> CodeDrag::codeID(const QMimeData &data)
{
    constexpr qsizetype length = 36; // other spellings have braces around it
    const QString text = data.text();
    const QUuid id = text.size() == length ? QUuid::fromString(text) : QUuid();
    return id.isNull() ? std::nullopt : std::optional(id);
}
