#include "cli/DashedWords.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "cli/Command.h"
#include "core/Globals.h"

namespace zolmara::cli {
namespace {

/// No person keys it, and the reader of options takes it for a letter.
constexpr char kMark = '\x01';

struct CommonOption {
    std::string_view Name;
    bool TakesValue;
};
constexpr std::array<CommonOption, 8> kCommonOptions = {{{"--quiet", false},
                                                         {"--yes", false},
                                                         {"--no", false},
                                                         {"--settings", true},
                                                         {"--format", true},
                                                         {"--version", false},
                                                         {"--help", false},
                                                         {"-h", false}}};

/// The arguments by position that may begin so. A file's name may, too, but is keyed so by mistake
/// more often than not; "./" ahead of it helps.
constexpr std::string_view kTexts[] = {"LINE", "COLUMN", "VALUE", "NAME", "CCN", "TEXT", "N"};

class Reader {
public:
    explicit Reader(std::span<const char* const> words) : words_(words) {}

    std::vector<std::string> Read() {
        for (; at_ < words_.size(); ++at_) Take(words_[at_]);
        return std::move(read_);
    }

private:
    void Take(const std::string& word) {
        if (word == "--") return TakeRest();
        if (word.starts_with("--") || word == "-h") return TakeOption(word);
        if (command_ == nullptr && !word.starts_with("-")) return TakeName(word);
        const std::string_view place = NextPlace();
        if (word.starts_with("-") && std::ranges::find(kTexts, place) == std::end(kTexts))
            NoOption(word);
        read_.push_back(Marked(word));
    }

    void TakeRest() {
        read_.emplace_back("--");
        while (++at_ < words_.size()) read_.push_back(Marked(words_[at_]));
    }

    /// The value of an option is whatever comes next.
    void TakeOption(const std::string& word) {
        const auto equals = word.find('=');
        const Values values = ValuesOf(word.substr(0, equals));
        read_.push_back(word);
        if (values == Values::None || equals != std::string::npos) return;
        TakeValue();
        while (values == Values::Several && at_ + 1 < words_.size() && *words_[at_ + 1] != '-')
            TakeValue();
    }
    void TakeValue() {
        if (at_ + 1 < words_.size()) read_.emplace_back(words_[++at_]);
    }

    /// A group such as "cc" needs its command's name as well.
    void TakeName(const std::string& word) {
        name_ += name_.empty() ? word : " " + word;
        for (const Command* command : AllCommands())
            if (command->Name == name_) command_ = command;
        read_.push_back(word);
    }

    /// The argument that the next word by position is for; empty where none is left.
    std::string_view NextPlace() {
        if (command_ == nullptr) return {};
        std::size_t place = 0;
        for (const Argument& argument : command_->Arguments) {
            if (argument.Name.starts_with("-")) continue;
            if (argument.Kind != ArgumentKind::Several && place++ != taken_) continue;
            ++taken_;
            return argument.Name;
        }
        return {};
    }

    enum class Values { None, One, Several };
    Values ValuesOf(const std::string& option) const {
        for (const CommonOption& common : kCommonOptions)
            if (common.Name == option) return common.TakesValue ? Values::One : Values::None;
        // Whoever names no command, or a group alone, is told of that.
        if (command_ == nullptr) return Values::None;
        for (const Argument& argument : command_->Arguments) {
            if (argument.Name != option) continue;
            if (argument.Kind == ArgumentKind::Several) return Values::Several;
            return argument.Kind == ArgumentKind::Flag ? Values::None : Values::One;
        }
        NoOption(option);
    }

    [[noreturn]] void NoOption(const std::string& word) const {
        throw CommandLineError{
            fmt::format("{} is no option{}; put -- ahead of words that begin with - and are none",
                        word, command_ == nullptr ? "" : fmt::format(" of {}", command_->Name))};
    }

    /// Nor does the reader take a marked word for another command.
    std::string Marked(const std::string& word) const {
        return command_ == nullptr ? word : kMark + word;
    }

    std::span<const char* const> words_;
    std::size_t at_ = 0;
    std::size_t taken_ = 0;  ///< places
    std::string name_;
    const Command* command_ = nullptr;
    std::vector<std::string> read_;
};

}  // namespace

std::vector<std::string> MarkTexts(std::span<const char* const> words) {
    return Reader(words).Read();
}

std::string WithoutMark(const std::string& word) {
    return word.starts_with(kMark) ? word.substr(1) : word;
}

std::string WithoutMarks(const std::string& message) {
    return Replace(message, std::string_view(&kMark, 1), "");
}

}  // namespace zolmara::cli
