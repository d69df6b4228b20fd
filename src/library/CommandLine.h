#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The switches of the command line. What isn't one of them is ignored.
class CommandLine {
public:
    static constexpr auto help = u"--help";
    static constexpr auto version = u"--version";
    static constexpr auto seedDemo = u"--seed-demo";
    static constexpr auto exportDemo = u"--export-demo";
    static constexpr auto qdpxTest = u"--qdpx-test";
    static constexpr auto importTest = u"--import-test";
    static constexpr auto queryTest = u"--query-test";
    static constexpr auto queryDemo = u"--query-demo";
    static constexpr auto querySheet = u"--query-sheet";
    static constexpr auto freqTest = u"--freq-test";
    static constexpr auto freqDemo = u"--freq-demo";
    static constexpr auto freqDemoTerm = u"--freq-demo-term";

    /// `arguments` without the program's name.
    explicit CommandLine(QStringList arguments);

    [[nodiscard]] bool has(QStringView name) const;
    /// The argument behind the first occurrence of the switch; absent when there is none.
    [[nodiscard]] std::optional<QString> valueOf(QStringView name) const;
    /// Whether the program ends by itself after obeying: no window will be needed.
    [[nodiscard]] bool quits() const;

private:
    QStringList m_arguments;
};
