// A flag that stands for as long as a scope lasts, and is back whatever is thrown in it.
#pragma once

namespace brennvar {

class FlagWhile {
public:
    explicit FlagWhile(bool& flag) : m_flag(flag) { m_flag = true; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;
    ~FlagWhile() { m_flag = false; }

private:
    bool& m_flag;
};

}  // namespace brennvar
