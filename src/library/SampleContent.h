#pragma once

#include <QList>
#include <QString>

/// A document of the sample content.
struct SampleDocument {
    QString title;
    QString text;
    QString sourceKind;
};

/// A passage of the sample content: `phrase`, where it first stands in the document, coded with `code`.
struct Seed {
    QString code;
    QString hex;
    QString docTitle;
    QString phrase;
};

/// A memo of the sample content, for the first code or document of that name.
struct SampleMemo {
    QString name;
    QString memo;
};

/// The small fixed data set with which a newcomer tries the program and the program exercises itself.
namespace SampleContent {
[[nodiscard]] const QList<SampleDocument> &documents();
[[nodiscard]] const QList<Seed> &seeds();
[[nodiscard]] const SampleMemo &codeMemo();
[[nodiscard]] const SampleMemo &documentMemo();
} // namespace SampleContent
