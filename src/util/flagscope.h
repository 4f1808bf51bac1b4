#pragma once
// Sets a flag for the life of a scope and puts its old value back on every
// way out of it, an exception included.

class FlagScope {
public:
    explicit FlagScope(bool& flag) : flag_(flag), old_(flag) { flag_ = true; }
    ~FlagScope() { flag_ = old_; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& flag_;
    bool old_;
};
