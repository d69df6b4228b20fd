#include "library/CodeTree.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <unordered_map>

namespace {

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
            if (depth < CodeTree::maxDepth)
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

/// Whether the way up from `cursor` meets `wanted` among its first `limit` codes.
bool leadsTo(const QUuid &wanted, std::optional<QUuid> cursor, const QList<Code> &codes, qsizetype limit)
{
    const auto known = byID(codes);
    for (; cursor && limit > 0; --limit) {
        if (*cursor == wanted)
            return true;
        const Code *code = known.value(*cursor);
        cursor = code ? code->parentID : std::nullopt;
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
    constexpr qsizetype maxAncestors = 50;
    return leadsTo(child, parent, codes, maxAncestors);
}

QList<Code> movedByMerge(const Code &source, const Code &target, const QList<Code> &codes)
{
    const bool targetRises = leadsTo(source.id, target.parentID, codes, codes.size());
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
