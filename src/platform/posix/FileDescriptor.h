#pragma once

#include <unistd.h>

#include <utility>

namespace tessivo {

/// Owns an open file of the system, or none (negative).
class FileDescriptor {
public:
    explicit FileDescriptor(int value = -1) : value_(value) {}
    FileDescriptor(FileDescriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (isOpen()) {
            ::close(value_);
        }
    }

    bool isOpen() const { return value_ >= 0; }
    int value() const { return value_; }

private:
    int value_;
};

}  // namespace tessivo
