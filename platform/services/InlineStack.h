// A stack whose first elements need no memory of their own.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace tessarin {

template <class T, std::size_t inlineCapacity>
class InlineStack {
public:
    InlineStack() = default;
    InlineStack(const InlineStack&) = delete;
    InlineStack& operator=(const InlineStack&) = delete;
    ~InlineStack() {
        while (size_ > 0) pop();
    }

    std::size_t size() const { return size_; }
    bool isEmpty() const { return size_ == 0; }
    // Valid until the next push or pop.
    T& top() { return (*this)[size_ - 1]; }
    T& operator[](std::size_t index) {
        return index < inlineCapacity ? *std::launder(place(index)) : beyond_[index - inlineCapacity];
    }

    void push(T element) { emplace(std::move(element)); }
    template <class... Arguments>
    T& emplace(Arguments&&... arguments) {
        T& element = size_ < inlineCapacity
                         ? *std::construct_at(place(size_), std::forward<Arguments>(arguments)...)
                         : beyond_.emplace_back(std::forward<Arguments>(arguments)...);
        ++size_;
        return element;
    }
    void pop() {
        --size_;
        if (size_ < inlineCapacity)
            std::destroy_at(std::launder(place(size_)));
        else
            beyond_.pop_back();
    }

private:
    T* place(std::size_t index) { return reinterpret_cast<T*>(inline_) + index; }

    alignas(T) std::byte inline_[inlineCapacity * sizeof(T)];
    std::vector<T> beyond_;
    std::size_t size_ = 0;
};

} // namespace tessarin
