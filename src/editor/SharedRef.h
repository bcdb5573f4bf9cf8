#pragma once

#include <cstddef>
#include <utility>

namespace tavrel {

/// A counted reference to an immutable object that keeps its own count.
///
/// Calls `retain(object)` and `release(object)`, found beside the type; both must be safe on any
/// thread. May be empty. One `SharedRef` is not to be changed and read on two threads at once.
template<class T>
class SharedRef {
public:
    SharedRef() = default;
    ~SharedRef()
    {
        if (object_)
            release(object_);
    }
    SharedRef(const SharedRef& other) : object_(other.object_)
    {
        if (object_)
            retain(object_);
    }
    SharedRef(SharedRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    SharedRef& operator=(SharedRef other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }

    /// Takes over the one reference that a new object is born with.
    static SharedRef adopt(T* object)
    {
        SharedRef ref;
        ref.object_ = object;
        return ref;
    }
    /// One more reference to an object that somebody else holds.
    static SharedRef share(T* object)
    {
        if (object)
            retain(object);
        return adopt(object);
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    bool operator==(const SharedRef&) const = default;

private:
    T* object_ = nullptr;
};

}  // namespace tavrel
