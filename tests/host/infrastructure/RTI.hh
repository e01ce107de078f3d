#pragma once

#include <string>

enum RTI_bool : unsigned char { RTI_false, RTI_true };

inline constexpr unsigned long RTI_G_high = 0x10, RTI_G_medium = 0x08;
inline constexpr unsigned long long RTI_P_fedDatabase = 1ULL << 40;
inline constexpr unsigned char RTI_T_NONE = 0xF0;

namespace RTI {

class Exception {
public:
    explicit Exception(const char *reason) : _reason(reason) {}
    virtual ~Exception();
    virtual Exception *cloneSelf() const = 0;
    virtual void throwSelf() const = 0;

    std::string _name;
    std::string _reason;
    int _serial = -1;
};

} // namespace RTI
