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
    explicit CommandLine(QStringList arguments) : m_arguments(std::move(arguments)) { }

    /// The answer to `--help`, without a line feed at the end: lines of at most 80 ASCII characters, which any terminal
    /// shows.
    [[nodiscard]] static QString helpText();

    [[nodiscard]] bool has(QStringView name) const { return m_arguments.contains(name); }
    /// The argument behind the first occurrence of the switch; absent when there is none.
    [[nodiscard]] std::optional<QString> valueOf(QStringView name) const;
    /// Whether the program prints the results of a self-test and ends, so that no window is needed.
    [[nodiscard]] bool quits() const;

private:
    QStringList m_arguments;
};
