// What XML takes for white space.
#pragma once

namespace tessarin::embedded {

constexpr bool isXMLWhiteSpace(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

} // namespace tessarin::embedded
