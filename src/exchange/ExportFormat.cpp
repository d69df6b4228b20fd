#include "exchange/ExportFormat.h"

using namespace Qt::StringLiterals;

namespace {

struct Names {
    QString rawValue;
    QString label;
    QString fileExtension;
};

Names namesOf(ExportFormat format)
{
    switch (format) {
    case ExportFormat::markdown:
        return {u"markdown"_s, u"Markdown"_s, u"md"_s};
    case ExportFormat::csv:
        return {u"csv"_s, u"CSV"_s, u"csv"_s};
    case ExportFormat::html:
        return {u"html"_s, u"HTML"_s, u"html"_s};
    }
    Q_UNREACHABLE();
}

} // namespace

QString ExportFormats::rawValue(ExportFormat format)
{
    return namesOf(format).rawValue;
}

QString ExportFormats::label(ExportFormat format)
{
    return namesOf(format).label;
}

QString ExportFormats::fileExtension(ExportFormat format)
{
    return namesOf(format).fileExtension;
}
