#include "Soundness.h"

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/UnpairedSurrogates.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QHash>
#include <QPixmapCache>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // its header comes with clang alone
#elif defined(__GLIBC__)
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

namespace {

using Parents = QHash<QUuid, std::optional<QUuid>>;

void checkForest(const Parents &parents)
{
    for (auto code = parents.cbegin(); code != parents.cend(); ++code) {
        std::optional<QUuid> above = code.value();
        for (qsizetype level = 0; above && level <= parents.size(); ++level) {
            ASSERT_TRUE(parents.contains(*above));
            above = parents.value(*above);
        }
        EXPECT_FALSE(above.has_value()) << "a cycle of codes";
    }
}

/// The text with what distinguishes its stretches.
QString stretches(const QAccessibleTextInterface &text)
{
    QString all;
    int end = 0;
    for (int start = 0; start < text.characterCount(); start = std::max(start + 1, end)) {
        const QString attributes = text.attributes(start, &start, &end);
        all += u'[' + attributes + u']' + text.text(start, end);
    }
    return all;
}

/// Asks the model: while nobody listens to it, the list's own interface doesn't hear of its changes.
void collectRows(const QAbstractItemModel &model, QStringList &into)
{
    for (int row = 0; row < model.rowCount(); ++row)
        into.append(model.index(row, 0).data(Qt::AccessibleTextRole).toString());
}

void collect(QAccessibleInterface &shown, QStringList &into)
{
    if (shown.state().invisible || shown.role() == QAccessible::ScrollBar)
        return;
    QStringList texts;
    for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
        texts.append(shown.text(kind));
    if (const QAccessibleTextInterface *text = shown.textInterface())
        texts.append(stretches(*text));
    texts.removeAll({});
    if (!texts.isEmpty()) // containers tell nothing; a half pair looks like what is stored for it
        into.append(replaceUnpairedSurrogates(QString::number(shown.role()) + u": "_s + texts.join(u" | "_s)));
    if (const auto *list = qobject_cast<const QAbstractItemView *>(shown.object()))
        return collectRows(*list->model(), into);
    for (int number = 0; number < shown.childCount(); ++number) {
        if (QAccessibleInterface *child = shown.child(number))
            collect(*child, into);
    }
}

} // namespace

void Soundness::checkFile(DatabaseQueue &queue)
{
    queue.read([](Database &database) {
        QHash<QUuid, qsizetype> lengths;
        for (const Document &document : Document::all().fetchAll(database))
            lengths.insert(document.id, document.text.size());
        Parents parents;
        for (const Code &code : Code::all().fetchAll(database))
            parents.insert(code.id, code.parentID);
        for (const Coding &coding : Coding::all().fetchAll(database)) {
            EXPECT_TRUE(parents.contains(coding.codeID));
            EXPECT_GT(coding.length, 0);
            EXPECT_GE(coding.start, 0);
            EXPECT_LE(coding.start + coding.length, lengths.value(coding.documentID));
        }
        checkForest(parents);
    });
}

QStringList Soundness::shownBy(QWidget &window)
{
    QStringList rows;
    collect(*QAccessible::queryAccessibleInterface(&window), rows);
    return rows;
}

std::string Soundness::difference(const QStringList &one, const QStringList &other)
{
    const QString left = one.join(u'\n');
    const QString right = other.join(u'\n');
    if (left == right)
        return {};
    const auto same = std::ranges::mismatch(left, right).in1 - left.begin();
    const auto from = std::max<qsizetype>(0, same - 100);
    return (left.mid(from, 200) + u"\n instead of\n"_s + right.mid(from, 200)).toStdString();
}

QMap<QByteArray, qsizetype> Soundness::objectsOf(const QWidget &window)
{
    QMap<QByteArray, qsizetype> counts;
    for (const QObject *object : window.findChildren<QObject *>())
        ++counts[object->metaObject()->className()];
    return counts;
}

qint64 Soundness::heapInUse()
{
    QPixmapCache::clear();
#if defined(__SANITIZE_ADDRESS__)
    return qint64(__sanitizer_get_current_allocated_bytes());
#elif defined(__GLIBC__)
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks + heap.hblkhd);
#else
    return 0;
#endif
}
