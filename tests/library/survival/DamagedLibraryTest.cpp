#include "library/survival/Isolated.h"
#include "library/survival/Visit.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "support/NastyText.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype pageSize = 4'096;

/// Ways in which a file of a database comes to harm, by chance.
class Damage {
public:
    explicit Damage(unsigned seed) : m_random(seed) { }

    [[nodiscard]] QByteArray done(QByteArray bytes)
    {
        switch (m_random.number(0, 9)) {
        case 0:
            bytes.truncate(place(bytes));
            break;
        case 1:
            bytes.truncate(place(bytes) / pageSize * pageSize);
            break;
        case 2:
            bytes.replace(somePage(bytes), pageSize, QByteArray(pageSize, '\0'));
            break;
        case 3:
            bytes.replace(somePage(bytes), pageSize, bytes.mid(somePage(bytes), pageSize));
            break;
        case 4:
            fillWithNoise(bytes, somePage(bytes), m_random.number(1, pageSize));
            break;
        case 5:
            fillWithNoise(bytes, m_random.number(16, 99), m_random.number(1, 4)); // what the file says of itself
            break;
        case 6: // what a page says of its cells, and where they are
            for (int times = m_random.number(1, 6); times > 0; --times)
                fillWithNoise(bytes, somePage(bytes) + m_random.number(0, 40), 1);
            break;
        case 7: // cells fill a page from its end
            for (int times = m_random.number(1, 12); times > 0; --times)
                fillWithNoise(bytes, somePage(bytes) + pageSize - m_random.number(1, 800), 1);
            break;
        case 8: // the schema and small tables lie in the first pages
            for (int times = m_random.number(1, 30); times > 0; --times)
                fillWithNoise(bytes, m_random.number(100, int(std::min(bytes.size(), 14 * pageSize)) - 2), 1);
            break;
        default:
            for (int times = m_random.number(1, 30); times > 0; --times)
                flip(bytes[place(bytes)]);
        }
        return bytes;
    }
    /// What lies beside the file as an unfinished change; nothing for most.
    [[nodiscard]] QByteArray journal()
    {
        static const QByteArray magic = QByteArray::fromHex("d9d505f920a163d7");
        QByteArray bytes;
        if (!m_random.onceIn(12))
            return bytes;
        bytes.resize(m_random.number(1, 3 * pageSize));
        fillWithNoise(bytes, 0, bytes.size());
        return m_random.onceIn(2) ? magic + bytes : bytes;
    }

private:
    qsizetype place(const QByteArray &bytes) { return m_random.number(0, int(bytes.size()) - 1); }
    qsizetype somePage(const QByteArray &bytes) { return place(bytes) / pageSize * pageSize; }
    void fillWithNoise(QByteArray &bytes, qsizetype start, qsizetype length)
    {
        static constexpr char extremes[] = {'\0', '\x01', '\x7F', '\x80', '\xFF'};
        for (qsizetype index = start; index < std::min(start + length, bytes.size()); ++index)
            bytes[index] = m_random.onceIn(3) ? extremes[m_random.number(0, 4)] : char(m_random.number(0, 255));
    }
    void flip(char &byte) { byte = char(uchar(byte) ^ (1U << unsigned(m_random.number(0, 7)))); }

    NastyText m_random;
};

int parameter(const char *name, int usual)
{
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : usual;
}

} // namespace

/// VORN_DAMAGED_COPIES says how many, VORN_SEED where chance begins.
TEST(DamagedLibrary, IsRefusedOrUsedAsFarAsItGoesAndNeverBringsTheProgramDown)
{
    Workplace place;
    place.restoreLibrary();
    const QByteArray sound = AtomicFile::readFile(place.libraryFile());
    const QString journal = place.libraryFile() + u"-journal"_s;
    const int copies = parameter("VORN_DAMAGED_COPIES", 50);
    int refused = 0;
    const auto first = unsigned(parameter("VORN_SEED", 1));
    for (unsigned seed = first; seed < first + unsigned(copies); ++seed) {
        Damage damage(seed);
        AtomicFile::write(place.libraryFile(), damage.done(sound));
        QFile::remove(journal);
        const QByteArray unfinished = damage.journal();
        if (!unfinished.isEmpty())
            AtomicFile::write(journal, unfinished);
        const Ending ending =
            inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports(), unfinished.isEmpty()); });
        EXPECT_EQ(ending.fault, "") << "seed " << seed;
        const bool isRefused = ending.result.startsWith(u"refused: "_s) && ending.result.size() > 12;
        EXPECT_TRUE(isRefused || ending.result.startsWith(u"open\n"_s))
            << "seed " << seed << ": " << ending.result.toStdString();
        refused += isRefused ? 1 : 0;
        if (qEnvironmentVariableIsSet("VORN_SHOW"))
            std::printf("    %u %s\n", seed, qPrintable(ending.result));
    }
    std::printf("%d damaged copies, %d of them refused\n", copies, refused);
}
