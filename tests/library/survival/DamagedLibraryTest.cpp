#include "library/survival/Isolated.h"
#include "library/survival/Visit.h"
#include "library/survival/Workplace.h"
#include "platform/AtomicFile.h"
#include "support/NastyText.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageSize = 4'096;

/// Fills a part of the bytes with noise, or cuts them off, as chance has it.
void damage(QByteArray &bytes, NastyText &random)
{
    const auto noise = [&](qsizetype start, int length) {
        for (qsizetype index = start; index < std::min(start + length, bytes.size()); ++index)
            bytes[index] = char(random.onceIn(2) ? random.number(0, 1) * 255 : random.number(0, 255));
    };
    const qsizetype page = random.number(0, int(bytes.size()) / pageSize - 1) * pageSize;
    switch (random.number(0, 4)) {
    case 0:
        return bytes.truncate(page + random.number(0, 1) * 100);
    case 1:
        return noise(page, random.number(1, pageSize));
    case 2:
        return noise(random.number(16, 99), random.number(1, 4)); // what the file says of itself
    case 3:
        return noise(page + random.number(0, 40), 2); // what a page says of its cells
    default:
        for (int times = random.number(1, 30); times > 0; --times)
            noise(random.number(100, 14 * pageSize), 1); // the schema and small tables lie in the first pages
    }
}

} // namespace

/// VORN_DAMAGED_COPIES says how many, VORN_SEED where chance begins.
TEST(DamagedLibrary, IsRefusedOrUsedAsFarAsItGoesAndNeverBringsTheProgramDown)
{
    const int given = qEnvironmentVariableIntValue("VORN_DAMAGED_COPIES");
    const int copies = given > 0 ? given : 10;
    const auto first = unsigned(qEnvironmentVariableIntValue("VORN_SEED"));
    Workplace place;
    place.restoreLibrary();
    const QByteArray sound = AtomicFile::readFile(place.libraryFile());
    int refused = 0;
    for (unsigned seed = first; seed < first + unsigned(copies); ++seed) {
        SCOPED_TRACE(seed);
        NastyText random(seed);
        QByteArray bytes = sound;
        damage(bytes, random);
        AtomicFile::write(place.libraryFile(), bytes);
        const Ending ending = inProcessOfItsOwn([&] { return visit(place.libraryFile(), place.exports()); });
        EXPECT_EQ(ending.fault, "");
        const bool isRefused = ending.result.startsWith(u"refused: "_s) && ending.result.size() > 12;
        EXPECT_TRUE(isRefused || ending.result.startsWith(u"open\n"_s)) << ending.result.toStdString();
        refused += isRefused ? 1 : 0;
    }
    std::printf("%d damaged copies, %d of them refused\n", copies, refused);
}
