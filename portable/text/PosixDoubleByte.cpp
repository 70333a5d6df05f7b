#include <iconv.h>

#include <cerrno>

#include "portable/text/DoubleByteSet.h"

namespace zu::text {

namespace {

const char* IconvName(unsigned number) noexcept {
    switch (number) {
        case 932:
            return "CP932";
        case 936:
            return "CP936";
        case 949:
            return "CP949";
        case 950:
            return "CP950";
        default:
            return nullptr;
    }
}

const iconv_t kNone = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): given by iconv

class Descriptor {
public:
    Descriptor(const char* to, const char* from) : value_(iconv_open(to, from)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (value_ != kNone) iconv_close(value_);
    }
    bool isOpen() const noexcept { return value_ != kNone; }
    iconv_t get() const noexcept { return value_; }

private:
    iconv_t value_;
};

class IconvConverter final : public DoubleByteConverter {
public:
    explicit IconvConverter(const char* name) : decode_("UTF-16LE", name), encode_(name, "UTF-16LE") {}

    bool isUsable() const noexcept { return decode_.isOpen() && encode_.isOpen(); }

    void Decode(std::string_view bytes, std::u16string& out) override {
        iconv(decode_.get(), nullptr, nullptr, nullptr, nullptr);
        std::string source(bytes);
        char* from = source.data();
        std::size_t left = source.size();
        while (left > 0) {
            char16_t units[128];
            char* to = reinterpret_cast<char*>(units);
            std::size_t room = sizeof units;
            errno = 0;
            const std::size_t result = iconv(decode_.get(), &from, &left, &to, &room);
            const int reason = errno;  // before the append, which may allocate
            out.append(units, (sizeof units - room) / sizeof(char16_t));
            if (result != static_cast<std::size_t>(-1)) break;
            if (reason == E2BIG) continue;
            // An undefined pair or a lead byte at the end: one byte is lost, the rest is read.
            out.push_back(u'\uFFFD');
            ++from;
            --left;
        }
    }

    bool Encode(std::u16string_view characters, std::string& out, std::size_t& firstBad) override {
        iconv(encode_.get(), nullptr, nullptr, nullptr, nullptr);
        std::u16string source(characters);
        char* from = reinterpret_cast<char*>(source.data());
        std::size_t left = source.size() * sizeof(char16_t);
        out.resize(source.size() * 2 + 4);
        char* to = out.data();
        std::size_t room = out.size();
        const std::size_t result = iconv(encode_.get(), &from, &left, &to, &room);
        firstBad = source.size() - left / sizeof(char16_t);
        out.resize(out.size() - room);
        // A positive result counts characters that were replaced by something similar.
        return result == 0;
    }

private:
    Descriptor decode_;
    Descriptor encode_;
};

}  // namespace

std::unique_ptr<DoubleByteConverter> MakeDoubleByteConverter(unsigned number) {
    const char* name = IconvName(number);
    if (!name) return nullptr;
    auto converter = std::make_unique<IconvConverter>(name);
    if (!converter->isUsable()) return nullptr;
    return converter;
}

}  // namespace zu::text
