#include "platform/Text.h"

#include <algorithm>

namespace Text {

bool isBlank(QStringView text)
{
    // Every white-space character lies in the Basic Multilingual Plane, so testing UTF-16 code
    // units is exact: a surrogate is never white space.
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

} // namespace Text
