// SPDX-License-Identifier: Apache-2.0
#include "tests/cli/SampleVerbs.h"

#include "cli/Console.h"
#include "cli/VerbLine.h"

namespace {

constexpr QLatin1String set("set");
constexpr QLatin1String one("one");
constexpr QLatin1String two("two");

QString text(const char *literal)
{
    return QString::fromUtf8(literal);
}

int printLine(const VerbLine &line, Console &console)
{
    for (const QLatin1String option : {set, one, two}) {
        if (line.isSet(option))
            console.out() << option << '=' << line.values(option).join(QLatin1Char(',')) << '\n';
    }
    console.out() << line.operands().join(QLatin1Char(',')) << '\n';
    return ExitCode::done;
}

Verb groupVerb()
{
    Verb verb{QLatin1String("config"), QLatin1String("work on documents")};
    verb.description = text("Makes and changes documents.");
    return verb;
}

Verb newVerb()
{
    Verb verb{QLatin1String("config new"), QLatin1String("make a document"), printLine};
    verb.description = text("Makes a document; see \"pct lint\".");
    verb.options = {
        required({set, text("a setting and its value"), Value::text("NAME=VALUE")}),
        {OptionName::output, text("the document's file [new: or old]"), Value::document("DOC")},
    };
    verb.options.first() = repeatable(verb.options.first());
    return verb;
}

Verb getVerb()
{
    Verb verb{QLatin1String("config get"), QLatin1String("print settings"), printLine};
    verb.description = text("Prints settings.");
    verb.operands = {{Value::document("DOC"), text("the document")},
                     {Value::text("NAME"), text("a setting"), true, true}};
    return verb;
}

Verb pickVerb()
{
    Verb verb{QLatin1String("pick"), QLatin1String("take one of two"), printLine};
    verb.description = text("Takes one of two.");
    verb.options =
        alternatives({required({one, text("the vendor's \\ first"), Value::choice({text("a"), text("b")})}),
                      required({two, text("the second")})});
    return verb;
}

Verb checkingVerb()
{
    Verb verb{QLatin1String("lint"), QLatin1String("find what's wrong"), printLine};
    verb.description = text("Finds what is wrong.");
    verb.operands = {{Value::settings("FILE"), text("what to look at"), false, true}};
    return verb;
}

} // namespace

VerbTable sampleVerbs()
{
    return {groupVerb(), newVerb(), getVerb(), pickVerb(), checkingVerb()};
}
