#include "workspace/results/OccurrenceListModel.h"

#include "analysis/TermMatch.h"
#include "kit/lists/SnippetRowDelegate.h"

using namespace Qt::StringLiterals;

namespace {

// More than the lines of a row can hold. A context begins a few units before its token, so the search isn't cut short.
constexpr qsizetype searchedLength = 1024;
constexpr qsizetype comparedLength = 800;

} // namespace

int OccurrenceListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_occurrences.size());
}

QVariant OccurrenceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const WordFrequency::Occurrence shown = occurrence(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown.context;
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(shown.context, shown.documentTitle);
    case SnippetRowDelegate::documentTitleRole:
        return shown.documentTitle;
    case SnippetRowDelegate::emphasisStartRole:
        return emphasisOf(shown).location;
    case SnippetRowDelegate::emphasisLengthRole:
        return emphasisOf(shown).length;
    default:
        return {};
    }
}

TextRange OccurrenceListModel::emphasisOf(const WordFrequency::Occurrence &occurrence) const
{
    const auto beginning = [](const QString &text, qsizetype length) {
        return QStringView(text).first(std::min(length, text.size()));
    };
    return TermMatch::firstIn(beginning(occurrence.context, searchedLength), beginning(m_term, comparedLength));
}

bool OccurrenceListModel::setOccurrences(const QString &term, const OccurrenceList &occurrences)
{
    if (term == m_term && occurrences == m_occurrences)
        return false;
    beginResetModel();
    m_term = term;
    m_occurrences = occurrences;
    endResetModel();
    return true;
}
