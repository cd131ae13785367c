#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kelvo {

/// Keeps an observer attached to a published property; letting go of it detaches the observer.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;

private:
    template <class T>
    friend class Published;
    explicit Subscription(std::shared_ptr<void> observer) : observer_(std::move(observer)) {}

    std::shared_ptr<void> observer_;
};

/// A property of the engine that everybody may read and only the engine sets. Every assignment,
/// also of an equal value, is announced on the engine's thread: once before the new value is
/// stored, when `get()` still gives the old one, and once after.
///
/// Observers may attach and detach observers while they are told; one attached then hears the next
/// assignment first. They must not destroy the engine.
template <class T>
class Published {
public:
    using Callback = std::function<void()>;

    explicit Published(T initial = T{}) : value_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& get() const { return value_; }
    const T& operator*() const { return value_; }
    const T* operator->() const { return &value_; }

    /// Either callback may be empty.
    Subscription observe(Callback willChange, Callback didChange) const {
        auto observer =
            std::make_shared<Observer>(Observer{std::move(willChange), std::move(didChange)});
        observers_.push_back(observer);
        return Subscription(std::move(observer));
    }

private:
    friend class EngineVM;

    struct Observer {
        Callback willChange;
        Callback didChange;
    };

    void set(T value) {
        announce(&Observer::willChange);
        value_ = std::move(value);
        announce(&Observer::didChange);
    }

    void announce(Callback Observer::*callback) const {
        if (observers_.empty()) return;
        ++announcing_;
        bool gone = false;
        // By index: an observer may attach another one, which moves the list.
        for (std::size_t i = 0, count = observers_.size(); i < count; ++i) {
            const auto observer = observers_[i].lock();
            if (!observer) {
                gone = true;
            } else if ((*observer).*callback) {
                ((*observer).*callback)();
            }
        }
        // An observer may set the property it observes, which announces from inside this loop.
        if (--announcing_ == 0 && gone) {
            std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        }
    }

    T value_;
    mutable std::vector<std::weak_ptr<Observer>> observers_;
    mutable int announcing_ = 0;
};

enum class RowOrder { oldestFirst, newestFirst };

/// The rows of a list that only ever grows, as they were when this view was made, oldest or newest
/// first. A view costs nothing to make or to copy however many rows there are: it refers to the
/// list that the engine keeps, and is valid while the engine lives.
template <class Container, RowOrder order>
class RowsView {
public:
    using value_type = typename Container::value_type;

    RowsView() = default;
    explicit RowsView(const Container& rows) : rows_(&rows), count_(rows.size()) {}

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }

    const value_type& operator[](std::size_t row) const {
        return (*rows_)[order == RowOrder::newestFirst ? count_ - 1 - row : row];
    }
    const value_type& front() const { return (*this)[0]; }
    const value_type& back() const { return (*this)[count_ - 1]; }

    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = typename Container::value_type;

        Iterator() = default;
        Iterator(const RowsView* view, std::size_t row) : view_(view), row_(row) {}
        const value_type& operator*() const { return (*view_)[row_]; }
        const value_type* operator->() const { return &(*view_)[row_]; }
        Iterator& operator++() {
            ++row_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++row_;
            return before;
        }
        bool operator==(const Iterator& other) const { return row_ == other.row_; }

    private:
        const RowsView* view_ = nullptr;
        std::size_t row_ = 0;
    };

    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, count_}; }

private:
    const Container* rows_ = nullptr;
    std::size_t count_ = 0;
};

} // namespace kelvo
