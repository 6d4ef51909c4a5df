// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "prettyjson.h"

#include <QChar>

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <vector>

namespace quillfen {

namespace {

/// Only counts, so that the text can be given its memory at once instead of growing into twice as much.
class Counter final {
public:
    void operator()(std::string_view text) noexcept { m_size += text.size(); }
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }

private:
    std::size_t m_size = 0;
};

class Appender final {
public:
    explicit Appender(std::size_t size) { m_text.reserve(size); }
    void operator()(std::string_view text) { m_text.append(text); }
    [[nodiscard]] std::string take() { return std::move(m_text); }

private:
    std::string m_text;
};

char32_t codePointAt(std::string_view text, std::size_t length)
{
    constexpr std::array<unsigned, 5> leadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t code = static_cast<unsigned char>(text.front()) & leadBits.at(length);
    for (std::size_t at = 1; at < length; ++at) {
        code = (code << 6U) | (static_cast<unsigned char>(text[at]) & 0x3FU);
    }
    return code;
}

/// How many bytes the character takes that begins with this one.
std::size_t lengthOf(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    if (byte < 0xC0) {
        return 1;
    }
    return byte < 0xE0 ? 2 : (byte < 0xF0 ? 3 : 4);
}

/// Letters by category that look like nothing all the same.
bool isFiller(char32_t code)
{
    return code == 0x034F || code == 0x115F || code == 0x1160 || code == 0x17B4 || code == 0x17B5 || code == 0x3164 ||
           code == 0xFFA0 || (code >= 0x180B && code <= 0x180D);
}

bool isUnseen(char32_t code)
{
    switch (QChar::category(code)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return isFiller(code);
    }
}

template <typename Sink>
class Writer final {
public:
    explicit Writer(Sink &sink) : m_sink(sink) {}

    /// Goes down with a list of its own: an answer may be nested deeper than a thread's stack is meant for.
    void write(const json::value &root)
    {
        begin(root);
        while (!m_open.empty()) {
            Frame &inner = m_open.back();
            const bool isArray = inner.container->is_array();
            const std::size_t size =
                isArray ? inner.container->get_array().size() : inner.container->get_object().size();
            if (inner.next == size) {
                m_sink(isArray ? "\n]" : "\n}");
                m_open.pop_back();
                continue;
            }
            m_sink(inner.next == 0 ? "\n" : ",\n");
            const std::size_t at = inner.next++;
            begin(isArray ? inner.container->get_array()[at] : member(inner.container->get_object(), at));
        }
    }

private:
    struct Frame {
        const json::value *container;
        std::size_t next;
    };

    const json::value &member(const json::object &object, std::size_t at)
    {
        const auto &pair = *(object.begin() + static_cast<std::ptrdiff_t>(at));
        text(pair.key());
        m_sink(": ");
        return pair.value();
    }

    void begin(const json::value &value)
    {
        switch (value.kind()) {
        case json::kind::array:
            open(value, value.get_array().empty(), "[", "[]");
            return;
        case json::kind::object:
            open(value, value.get_object().empty(), "{", "{}");
            return;
        case json::kind::string:
            text(value.get_string());
            return;
        case json::kind::double_:
            number(value.get_double());
            return;
        case json::kind::int64:
            whole(value.get_int64());
            return;
        case json::kind::uint64:
            whole(value.get_uint64());
            return;
        case json::kind::bool_:
            m_sink(value.get_bool() ? "true" : "false");
            return;
        case json::kind::null:
            m_sink("null");
            return;
        }
    }

    void open(const json::value &value, bool isEmpty, std::string_view bracket, std::string_view both)
    {
        m_sink(isEmpty ? both : bracket);
        if (!isEmpty) {
            m_open.push_back({&value, 0});
        }
    }

    template <typename Whole>
    void whole(Whole value)
    {
        std::array<char, 24> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        m_sink({digits.data(), end});
    }

    /// In the shortest form that is read back as the same number, and seen not to be a whole one by kind.
    void number(double value)
    {
        if (!std::isfinite(value)) {
            m_sink(value < 0 ? "-1e999" : "1e999"); // what is read as infinite was written so
            return;
        }
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        const std::string_view written(digits.data(), end);
        m_sink(written);
        if (written.find_first_of(".e") == std::string_view::npos) {
            m_sink(".0");
        }
    }

    void text(std::string_view value)
    {
        m_sink("\"");
        std::size_t plain = 0; // where the part begins that goes out as it is
        std::size_t at = 0;
        while (at < value.size()) {
            const auto byte = static_cast<unsigned char>(value[at]);
            if (byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\') {
                ++at;
                continue;
            }
            const std::size_t length = std::min(lengthOf(value[at]), value.size() - at);
            const char32_t code = codePointAt(value.substr(at, length), length);
            if (byte < 0x80 || isUnseen(code)) {
                m_sink(value.substr(plain, at - plain));
                escape(code);
                plain = at + length;
            }
            at += length;
        }
        m_sink(value.substr(plain));
        m_sink("\"");
    }

    void escape(char32_t code)
    {
        constexpr std::string_view special = "\"\\\b\f\n\r\t";
        constexpr std::string_view letters = "\"\\bfnrt";
        const std::size_t place = code < 0x80 ? special.find(static_cast<char>(code)) : std::string_view::npos;
        if (place != std::string_view::npos) {
            m_sink("\\");
            m_sink(letters.substr(place, 1));
        } else if (code < 0x10000) {
            unit(code);
        } else {
            unit(QChar::highSurrogate(code));
            unit(QChar::lowSurrogate(code));
        }
    }

    void unit(char32_t value)
    {
        constexpr std::string_view digits = "0123456789abcdef";
        std::array<char, 6> escaped{'\\', 'u'};
        for (unsigned place = 0; place < 4; ++place) {
            escaped.at(2 + place) = digits[(value >> (12 - 4 * place)) & 0xFU];
        }
        m_sink({escaped.data(), escaped.size()});
    }

    Sink &m_sink;
    std::vector<Frame> m_open;
};

} // namespace

std::string prettyLines(const json::value &value)
{
    Counter counter;
    Writer(counter).write(value);
    Appender text(counter.size());
    Writer(text).write(value);
    return text.take();
}

} // namespace quillfen
