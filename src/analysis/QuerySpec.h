#pragma once

#include <QList>
#include <QString>
#include <QUuid>

#include <array>

/// What is asked of the coded passages of a project.
struct QuerySpec {
    enum class Mode {
        any, ///< passages coded with at least one of the codes
        all ///< stretches of text where all the codes overlap
    };

    QList<QUuid> codeIDs; ///< in the order chosen, which the summary and the results keep
    Mode mode = Mode::any;
    QString textFilter = {}; ///< as typed; nothing but blanks and line breaks is no filter

    bool operator==(const QuerySpec &) const = default;

    /// In the order they are offered.
    [[nodiscard]] static const std::array<Mode, 2> &modes()
    {
        static constexpr std::array<Mode, 2> all{Mode::any, Mode::all};
        return all;
    }
    [[nodiscard]] static QString label(Mode mode)
    {
        switch (mode) {
        case Mode::any:
            return QStringLiteral("Any of the codes");
        case Mode::all:
            return QStringLiteral("All of the codes");
        }
        Q_UNREACHABLE();
    }
};
