#include "library/SampleContent.h"

using namespace Qt::StringLiterals;

namespace {

const QString toolsAndFriction = u"Tools & friction"_s;
const QString attentionHabits = u"Attention habits"_s;
const QString environmentMatters = u"Environment matters"_s;

const QString interview = u"Interview — Participant A (excerpt)"_s;
const QString chineseInterview = u"访谈记录 · 受访者 B（节选）"_s;
const QString fieldNotes = u"Field notes — week 1"_s;
const QString chineseNotes = u"远程协作观察笔记"_s;

} // namespace

namespace SampleContent {

const QList<SampleDocument> &documents()
{
    static const QList<SampleDocument> table{
        {interview,
            u"# Interview — Participant A (excerpt)\n\n"
            u"**Date:** 14 October · **Duration:** 52 min · **Format:** remote, recorded\n\n"
            u"> I think the hardest part wasn't learning the tool itself — it was unlearning the habit of "
            u"checking my phone every few minutes. The app helped, but honestly, what changed things was "
            u"deciding *why* I wanted the time back.\n\n"
            u"**Interviewer:** What made that decision stick?\n\n"
            u"**A:** I wrote it down. One sentence, on a sticky note, above my desk: \"Finish the thing "
            u"you started.\" Sounds trivial, but every time I reached for the phone, that sentence was "
            u"there. After two weeks, I stopped reaching."_s,
            u"md"_s},
        {chineseInterview,
            u"# 访谈记录 · 受访者 B（节选）\n\n"
            u"**时间：** 10 月 13 日 · **时长：** 41 分钟 · **形式：** 面对面\n\n"
            u"**访：** 你平时是怎么安排一天的工作的？\n\n"
            u"**B：** 早上先做最难的，代码要趁脑子清醒的时候写。到了下午就处理杂事——回邮件、看文档、开会。"
            u"如果下午要写重要代码，我基本写不出来，注意力已经用完了。\n\n"
            u"**访：** 有过被工具打断的经历吗？\n\n"
            u"**B：** 太多了。最烦的是那种「重要通知」，点开一看全是废话。后来我干脆把所有通知都关了，世界"
            u"清静了，但有时候又怕错过真的重要的消息，只能隔一小时自己去看一眼。"_s,
            u"md"_s},
        {fieldNotes,
            u"Field notes — week 1\n"
            u"Observer: [researcher] · Site: co-working space, west wing\n\n"
            u"Day 1 — Arrived 09:10. Three regulars at the long table, all wearing headphones. Nobody "
            u"talks before 11:00. There's an unwritten rule here: the corner sofa is for calls, the long "
            u"table is for silence.\n\n"
            u"Day 2 — Counted phone pickups for the person nearest me: 14 in one hour. Every pickup "
            u"followed the same pattern: unlock, glance, lock, put down. Forty seconds later, unlock "
            u"again.\n\n"
            u"Day 3 — The barista told me most people who buy a day pass never come back. \"They think "
            u"they need a place. What they need is a plan.\" I wrote that down verbatim."_s,
            u"txt"_s},
        {chineseNotes,
            u"# 远程协作观察笔记\n\n"
            u"**记录时间：** 第 2 周\n\n"
            u"- 周会时长从 60 分钟压缩到 25 分钟后，发言人数反而变多了。以往「留到最后五分钟再说」的人现在"
            u"会提前准备。\n"
            u"- 文档评论区才是真正的会议：73% 的观点交锋发生在异步文字里，而不是视频里。\n"
            u"- 设备差异很明显：用双屏的成员平均回应速度快 1.8 倍。但有一次停电，最「低配」的同事用手机回"
            u"复反而最及时——工具不是决定因素，习惯才是。"_s,
            u"txt"_s},
    };
    return table;
}

const QList<Seed> &seeds()
{
    static const QList<Seed> table{
        {toolsAndFriction, u"#5E5CE6"_s, fieldNotes, u"the corner sofa is for calls, the long table is for silence"_s},
        {toolsAndFriction, u"#5E5CE6"_s, chineseInterview, u"最烦的是那种「重要通知」，点开一看全是废话"_s},
        {attentionHabits, u"#34C759"_s, fieldNotes,
            u"Counted phone pickups for the person nearest me: 14 in one hour"_s},
        {attentionHabits, u"#34C759"_s, interview, u"unlearning the habit of checking my phone every few minutes"_s},
        {environmentMatters, u"#FF9500"_s, fieldNotes, u"What they need is a plan."_s},
        {environmentMatters, u"#FF9500"_s, chineseNotes, u"工具不是决定因素，习惯才是"_s},
        {environmentMatters, u"#FF9500"_s, fieldNotes, u"the corner sofa is for calls"_s},
        {toolsAndFriction, u"#5E5CE6"_s, fieldNotes, u"phone pickups for the person nearest me"_s},
    };
    return table;
}

const SampleMemo &codeMemo()
{
    static const SampleMemo memo{
        toolsAndFriction, u"Instances where tools or notifications get in the way of focus."_s};
    return memo;
}

const SampleMemo &documentMemo()
{
    static const SampleMemo memo{
        fieldNotes, u"Site: co-working space, west wing. Quiet norms emerge without signage."_s};
    return memo;
}

} // namespace SampleContent
