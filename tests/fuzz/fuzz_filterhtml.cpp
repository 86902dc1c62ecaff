// HTML fragments from other programs.

#include "fuzzinput.h"

#include "util/filterhtml.h"
#include "util/htmlrules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString html = FuzzInput(data, size).text();
    const QString text = clipboard::filterHtml(html);
    // The slow form takes its time on long texts.
    if (html.size() < 2000)
        require(text == htmlrules::filterByTheRules(html), "filtering equals the rules, step by step");
    return 0;
}
