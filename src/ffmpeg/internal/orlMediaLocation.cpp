// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaLocation.h"

#include <algorithm>
#include <utility>

namespace ORL_0_81::media {

namespace {

// The locale of the process has no say in what a URL is.
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

int hexValue(char c) {
    if (isDigit(c)) {
        return c - '0';
    }
    char const lower = toLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// In lower case; empty if the text begins with none.
std::string findScheme(std::string const& text) {
    std::string scheme;
    for (char const c : text) {
        if (c == ':') {
            return scheme;
        }
        bool const inner = isDigit(c) || c == '+' || c == '-' || c == '.';
        if (!isLetter(c) && (scheme.empty() || !inner)) {
            break;
        }
        scheme += toLower(c);
    }
    return std::string();
}

bool beginsWith(std::string const& text, std::size_t position, char const* prefix) {
    return text.compare(position, std::char_traits<char>::length(prefix), prefix) == 0;
}

// A zero byte is never decoded: it would hide the rest of the name.
std::string decodePercents(std::string const& text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            int const high = hexValue(text[i + 1]);
            int const low = hexValue(text[i + 2]);
            if (high >= 0 && low >= 0 && high + low > 0) {
                decoded += static_cast<char>(high * 16 + low);
                i += 2;
                continue;
            }
        }
        decoded += text[i];
    }
    return decoded;
}

std::string pathOfFileUrl(std::string const& url, std::size_t schemeEnd) {
    if (!beginsWith(url, schemeEnd, "//")) {
        return url.substr(schemeEnd);
    }
    std::size_t const host = schemeEnd + 2;
    if (beginsWith(url, host, "localhost/")) {
        return url.substr(url.find('/', host));
    }
    return url.substr(host);
}

} // namespace

ProtocolList::ProtocolList(std::string names) : m_names(std::move(names)) {}

bool ProtocolList::contains(std::string const& name) const {
    return !name.empty() && ("," + m_names + ",").find("," + name + ",") != std::string::npos;
}

MediaLocation findLocation(std::string const& text, ProtocolList const& allowed) {
    MediaLocation location;
    std::string scheme = findScheme(text);
    if (scheme == "file") {
        std::string const path = pathOfFileUrl(text, scheme.size() + 1);
        std::string const decoded = decodePercents(path);
        location.localPaths.push_back(path);
        if (decoded != path) {
            location.localPaths.push_back(decoded);
        }
        return location;
    }
    if (!scheme.empty() && (beginsWith(text, scheme.size() + 1, "//") || allowed.contains(scheme))) {
        location.protocol = std::move(scheme);
        return location;
    }
    location.localPaths.push_back(text);
    return location;
}

} // namespace ORL_0_81::media
