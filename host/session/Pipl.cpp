#include "host/session/Pipl.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>

namespace host {

namespace {

class Reader {
public:
    Reader(const std::vector<std::uint8_t>& bytes, bool little) : bytes_(bytes), little_(little) {}

    void need(std::size_t n) const {
        if (pos_ + n > bytes_.size()) throw std::runtime_error("PiPL truncated");
    }
    std::uint16_t u16() {
        need(2);
        const std::uint8_t* p = &bytes_[pos_];
        pos_ += 2;
        return little_ ? std::uint16_t(p[0] | (p[1] << 8)) : std::uint16_t((p[0] << 8) | p[1]);
    }
    std::uint32_t u32() {
        need(4);
        const std::uint8_t* p = &bytes_[pos_];
        pos_ += 4;
        if (little_) return std::uint32_t(p[0]) | (std::uint32_t(p[1]) << 8) | (std::uint32_t(p[2]) << 16) | (std::uint32_t(p[3]) << 24);
        return (std::uint32_t(p[0]) << 24) | (std::uint32_t(p[1]) << 16) | (std::uint32_t(p[2]) << 8) | std::uint32_t(p[3]);
    }
    std::size_t pos() const { return pos_; }
    void seek(std::size_t pos) { pos_ = pos; }
    const std::uint8_t* at(std::size_t pos) const { return &bytes_[pos]; }

private:
    const std::vector<std::uint8_t>& bytes_;
    bool little_;
    std::size_t pos_ = 0;
};

std::string pascalString(const std::uint8_t* data, std::uint32_t length) {
    if (length == 0) return std::string();
    const std::uint32_t n = data[0] < length ? data[0] : length - 1;
    return std::string(reinterpret_cast<const char*>(data + 1), n);
}

std::string cString(const std::uint8_t* data, std::uint32_t length) {
    std::uint32_t n = 0;
    while (n < length && data[n] != 0) ++n;
    return std::string(reinterpret_cast<const char*>(data), n);
}

bool matches(const std::vector<std::uint8_t>& bytes, std::size_t pos, const char* text) {
    if (bytes.size() < pos + 4) return false;
    for (int i = 0; i < 4; ++i)
        if (bytes[pos + i] != std::uint8_t(text[i])) return false;
    return true;
}

}  // namespace

PiplInfo parsePipl(const std::vector<std::uint8_t>& bytes) {
    PiplInfo info;
    // Windows: a 16-bit word 1, then version and count, then the first vendor "MIB8".
    const bool little = bytes.size() >= 14 && bytes[0] == 1 && bytes[1] == 0 && matches(bytes, 10, "MIB8");
    if (!little && !matches(bytes, 8, "8BIM") && !(bytes.size() == 8))
        throw std::runtime_error("not a PiPL property list");
    info.little_endian = little;
    Reader in(bytes, little);
    if (little) in.u16();
    in.u32();  // version
    const std::uint32_t count = in.u32();
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t vendor = in.u32();
        const std::uint32_t key = in.u32();
        in.u32();  // id
        const std::uint32_t length = in.u32();
        const std::size_t data = in.pos();
        in.need((length + 3u) & ~3u);
        in.seek(data);
        if (vendor == fourCC("8BIM")) {
            const std::uint8_t* p = in.at(data);
            if (key == fourCC("kind")) info.kind = in.u32();
            else if (key == fourCC("name")) info.name = pascalString(p, length);
            else if (key == fourCC("catg")) info.category = pascalString(p, length);
            else if (key == fourCC("eMNA")) info.match_name = pascalString(p, length);
            else if (key == fourCC("8664")) info.entry_point = cString(p, length);
            else if ((key == fourCC("mi64") || key == fourCC("ma64")) && info.entry_point.empty())
                info.entry_point = pascalString(p, length);
            else if (key == fourCC("eGLO")) info.global_out_flags = in.u32();
            else if (key == fourCC("eGL2")) info.global_out_flags2 = in.u32();
            else if (key == fourCC("eVER")) info.effect_version = in.u32();
            else if (key == fourCC("eSVR")) {
                const int major = in.u16();
                info.spec_version = std::make_pair(major, int(in.u16()));
            }
        }
        in.seek(data + ((length + 3u) & ~3u));
    }
    return info;
}

std::string findPiplSidecar(const std::string& module_path) {
    struct stat st;
    const std::string direct = module_path + ".pipl";
    if (::stat(direct.c_str(), &st) == 0) return direct;
    const std::size_t slash = module_path.find_last_of('/');
    const std::size_t dot = module_path.find_last_of('.');
    if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) {
        const std::string replaced = module_path.substr(0, dot) + ".pipl";
        if (::stat(replaced.c_str(), &st) == 0) return replaced;
    }
    return std::string();
}

PiplInfo readPiplFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return parsePipl(bytes);
}

namespace {

void put32(std::vector<std::uint8_t>& out, std::uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(std::uint8_t(v >> shift));
}

void property(std::vector<std::uint8_t>& out, std::uint32_t key, const std::vector<std::uint8_t>& data) {
    put32(out, fourCC("8BIM"));
    put32(out, key);
    put32(out, 0);
    put32(out, std::uint32_t(data.size()));
    out.insert(out.end(), data.begin(), data.end());
    while (out.size() % 4) out.push_back(0);
}

std::vector<std::uint8_t> word(std::uint32_t v) {
    std::vector<std::uint8_t> out;
    put32(out, v);
    return out;
}

std::vector<std::uint8_t> pascal(const std::string& s) {
    std::vector<std::uint8_t> out;
    out.reserve(s.size() + 1);
    out.push_back(std::uint8_t(s.size()));
    out.insert(out.end(), s.begin(), s.end());
    return out;
}

}  // namespace

std::vector<std::uint8_t> buildPipl(const PiplInfo& info) {
    std::vector<std::uint8_t> body;
    std::uint32_t count = 0;
    property(body, fourCC("kind"), word(info.kind)), ++count;
    if (!info.name.empty()) property(body, fourCC("name"), pascal(info.name)), ++count;
    if (!info.match_name.empty()) property(body, fourCC("eMNA"), pascal(info.match_name)), ++count;
    if (!info.entry_point.empty()) property(body, fourCC("mi64"), pascal(info.entry_point)), ++count;
    if (info.effect_version) property(body, fourCC("eVER"), word(*info.effect_version)), ++count;
    if (info.global_out_flags) property(body, fourCC("eGLO"), word(*info.global_out_flags)), ++count;
    if (info.global_out_flags2) property(body, fourCC("eGL2"), word(*info.global_out_flags2)), ++count;
    std::vector<std::uint8_t> out;
    put32(out, 0);
    put32(out, count);
    out.insert(out.end(), body.begin(), body.end());
    return out;
}

}  // namespace host
