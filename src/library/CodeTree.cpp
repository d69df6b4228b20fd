#include "library/CodeTree.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <unordered_map>

namespace {

constexpr int ancestorLimit = 50;

QHash<QUuid, const Code *> byID(const QList<Code> &codes)
{
    QHash<QUuid, const Code *> result;
    result.reserve(codes.size());
    for (const Code &code : codes)
        result.insert(code.id, &code);
    return result;
}

class Walk {
public:
    explicit Walk(const QList<Code> &codes) : m_codes(codes)
    {
        for (const Code &code : codes)
            m_children[code.parentID].append(&code);
        for (auto &[parent, siblings] : m_children)
            std::ranges::stable_sort(siblings, {}, &Code::createdAt);
    }

    QList<FlatCode> lines()
    {
        m_lines.reserve(m_codes.size());
        add({}, 0);
        for (const Code &code : m_codes) {
            if (!m_visited.contains(code.id))
                m_lines.append({code, 0});
        }
        return std::move(m_lines);
    }

private:
    void add(const std::optional<QUuid> &parent, qint64 depth)
    {
        const auto siblings = m_children.find(parent);
        if (siblings == m_children.end())
            return;
        for (const Code *code : siblings->second) {
            if (m_visited.contains(code->id))
                continue;
            m_visited.insert(code->id);
            m_lines.append({*code, depth});
            if (depth < CodeTree::deepestLevel)
                add(code->id, depth + 1);
        }
    }

    struct ParentHash {
        size_t operator()(const std::optional<QUuid> &id) const { return id ? qHash(*id) : 0; }
    };

    const QList<Code> &m_codes;
    std::unordered_map<std::optional<QUuid>, QList<const Code *>, ParentHash> m_children;
    QSet<QUuid> m_visited;
    QList<FlatCode> m_lines;
};

bool liesBelow(const Code &code, const QUuid &ancestor, const QHash<QUuid, const Code *> &codes)
{
    QSet<QUuid> visited;
    std::optional<QUuid> cursor = code.parentID;
    while (cursor && !visited.contains(*cursor)) {
        if (*cursor == ancestor)
            return true;
        visited.insert(*cursor);
        const Code *above = codes.value(*cursor);
        cursor = above ? above->parentID : std::nullopt;
    }
    return false;
}

} // namespace

namespace CodeTree {

QList<FlatCode> ordered(const QList<Code> &codes)
{
    return Walk(codes).lines();
}

bool isAtOrAbove(const QUuid &child, const QUuid &parent, const QList<Code> &codes)
{
    const auto known = byID(codes);
    QUuid cursor = parent;
    for (int step = 0; step < ancestorLimit; ++step) {
        if (cursor == child)
            return true;
        const Code *code = known.value(cursor);
        if (!code || !code->parentID)
            return false;
        cursor = *code->parentID;
    }
    return false;
}

QList<Code> movedByMerge(const Code &source, const Code &target, const QList<Code> &codes)
{
    const bool targetRises = liesBelow(target, source.id, byID(codes));
    QList<Code> moved;
    for (Code code : codes) {
        if (code.id == source.id)
            continue;
        if (code.id == target.id && targetRises)
            code.parentID = source.parentID == target.id ? std::nullopt : source.parentID;
        else if (code.parentID == source.id && code.id != target.id)
            code.parentID = target.id;
        else
            continue;
        moved.append(code);
    }
    return moved;
}

QList<Code> movedByDelete(const Code &code, const QList<Code> &children)
{
    QList<Code> moved = children;
    for (Code &child : moved)
        child.parentID = code.parentID == child.id ? std::nullopt : code.parentID;
    return moved;
}

} // namespace CodeTree
