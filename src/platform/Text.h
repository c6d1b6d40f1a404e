#pragma once

#include <QStringView>

namespace Text {

// True when nothing is left after trimming Unicode white space and line breaks from both ends:
// spaces of every width (U+00A0, U+2000..U+200A, U+3000, ...), tabs, U+000A..U+000D, U+0085,
// U+2028 and U+2029.
bool isBlank(QStringView text);

} // namespace Text
