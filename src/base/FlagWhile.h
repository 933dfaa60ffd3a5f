// A flag that stands for as long as a scope lasts, and is back whatever is thrown in it.
#pragma once

namespace brennvar {

class FlagWhile {
public:
    explicit FlagWhile(bool& flag) : m_flag(flag) { m_flag = true; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;
    ~FlagWhile() {
        if (!m_isKept) m_flag = false;
    }
    // What the flag stands for goes on after the scope; somebody else takes it back.
    void Keep() { m_isKept = true; }

private:
    bool& m_flag;
    bool m_isKept = false;
};

}  // namespace brennvar
