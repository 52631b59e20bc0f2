#include "platform/x11/script_tokens.hpp"

#include "platform/x11/application_index.hpp"

#include <algorithm>
#include <cctype>
#include <optional>

namespace orvel::x11 {

namespace {

using Kind = ScriptToken::Kind;

bool isBlank(char letter) { return letter == ' ' || letter == '\t'; }
bool isLineEnd(char letter) { return letter == '\n' || letter == '\r'; }
bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }
bool isWordPart(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}
bool isSign(char letter) {
    return std::string_view("(){},&").find(letter) != std::string_view::npos;
}

Failure syntaxError(const std::string& what) {
    return Failure{"syntax error: " + what + ". (-2741)"};
}

class Reader {
public:
    explicit Reader(std::string_view source) : source_(source) {}

    Result<std::vector<ScriptToken>> read() {
        while (at_ < source_.size()) {
            if (!readOne()) return syntaxError(problem_);
        }
        if (!tokens_.empty() && tokens_.back().kind == Kind::lineEnd) tokens_.pop_back();
        return std::move(tokens_);
    }

private:
    bool readOne() {
        const char letter = source_[at_];
        if (isBlank(letter)) {
            ++at_;
            return true;
        }
        if (isLineEnd(letter)) return readLineEnd();
        if (letter == '"') return readText();
        if (isSign(letter)) return add(Kind::sign, 1);
        if (isDigit(letter)) return add(Kind::number, lengthOf(isDigit));
        if (letter == '-' && at_ + 1 < source_.size() && isDigit(source_[at_ + 1]))
            return add(Kind::number, 1 + lengthOf(isDigit, 1));
        if (isWordPart(letter)) return add(Kind::word, lengthOf(isWordPart));
        problem_ = "Expected expression but found unknown token";
        return false;
    }

    template <typename Belongs>
    [[nodiscard]] std::size_t lengthOf(Belongs belongs, std::size_t from = 0) const {
        const auto rest = source_.substr(at_ + from);
        const auto end = std::find_if_not(rest.begin(), rest.end(), belongs);
        return static_cast<std::size_t>(end - rest.begin());
    }

    bool add(Kind kind, std::size_t length) {
        const auto part = source_.substr(at_, length);
        tokens_.push_back({kind, kind == Kind::word ? lowered(part) : std::string(part), part});
        at_ += length;
        return true;
    }

    bool readLineEnd() {
        if (tokens_.empty() || tokens_.back().kind == Kind::lineEnd) {
            ++at_;
            return true;
        }
        return add(Kind::lineEnd, 1);
    }

    bool readText() {
        const auto begin = at_++;
        std::string value;
        for (; at_ < source_.size() && source_[at_] != '"'; ++at_) {
            if (source_[at_] != '\\') {
                value += source_[at_];
                continue;
            }
            ++at_;
            const auto meant = at_ < source_.size() ? escaped(source_[at_]) : std::nullopt;
            if (!meant) {
                problem_ = "Expected “\"” but found unknown token";
                return false;
            }
            value += *meant;
        }
        if (at_ == source_.size()) {
            problem_ = "Expected “\"” but found end of script";
            return false;
        }
        ++at_;
        tokens_.push_back({Kind::text, std::move(value), source_.substr(begin, at_ - begin)});
        return true;
    }

    static std::optional<char> escaped(char letter) {
        switch (letter) {
            case '"':
            case '\\': return letter;
            case 'n': return '\n';
            case 'r': return '\r';
            case 't': return '\t';
            default: return std::nullopt;
        }
    }

    std::string_view source_;
    std::size_t at_ = 0;
    std::vector<ScriptToken> tokens_;
    std::string problem_;
};

}  // namespace

Result<std::vector<ScriptToken>> scriptTokens(std::string_view source) {
    return Reader(source).read();
}

}  // namespace orvel::x11
