#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "print/surface.h"

namespace quorvane {

// Text that is too long for its place first shrinks down to the smallest size, then is cut with an ellipsis.
// All sizes are in page units. UTF-8 characters are never split.

// On one line; line breaks and tabs become blanks. Draws nothing where not even the ellipsis fits.
void DrawFitted(Surface& surface, const Box& box, std::string_view text, Font font, double smallest,
                Align align);

// On as many lines as the box holds, from its top.
void DrawWrapped(Surface& surface, const Box& box, std::string_view text, Font font, double smallest);

// The lines of a text at that width, at most `limit` of them. CR, LF and CRLF each end a line; a word wider
// than the width is broken.
std::vector<std::string> WrapText(const Surface& surface, std::string_view text, Font font, double width,
                                  std::size_t limit);

}  // namespace quorvane
