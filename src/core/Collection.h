#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/Errors.h"
#include "core/Nearest.h"

/// Owns the objects of one kind that a device has, in the order of adding. They are found by exact name and by
/// position, counted from 1, both in constant time, and keep their address until they are removed. Objects may
/// also be added without a name; then only the position finds them.
///
/// The way to delete an object is taken along when it is added, so that a collection can be held where the type
/// is only declared.
template <class T>
class Collection {
    using Owner = std::unique_ptr<T, void (*)(T*)>;

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const noexcept { return std::hash<std::string_view>{}(name); }
    };

    template <class Value, class Base>
    class Walker {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = Value*;
        using reference = Value&;

        Walker() = default;
        explicit Walker(Base at) : at_(at) {}
        Value& operator*() const { return **at_; }
        Value* operator->() const { return at_->get(); }
        Walker& operator++() {
            ++at_;
            return *this;
        }
        Walker operator++(int) {
            Walker old = *this;
            ++at_;
            return old;
        }
        bool operator==(const Walker&) const = default;

    private:
        Base at_;
    };

public:
    /// `kind` names the objects in messages: "register", "PLL".
    explicit Collection(std::string kind) : kind_(std::move(kind)) {}

    [[nodiscard]] int Count() const noexcept { return static_cast<int>(items_.size()); }

    /// The object of that name, or null.
    [[nodiscard]] T* Find(std::string_view name) const {
        const auto found = places_.find(name);
        return found == places_.end() ? nullptr : items_[found->second].get();
    }

    /// The object at that position, or null.
    [[nodiscard]] T* Find(int position) const {
        return position < 1 || position > Count() ? nullptr : items_[static_cast<std::size_t>(position) - 1].get();
    }

    /// The object of that name; LookupError with the nearest known name without one.
    [[nodiscard]] T& At(std::string_view name) const {
        if (T* found = Find(name)) {
            return *found;
        }
        throw LookupError(UnknownName(kind_, name, Names()));
    }

    /// The object at that position, counted from 1; LookupError with the bounds beyond them.
    [[nodiscard]] T& At(int position) const {
        if (T* found = Find(position)) {
            return *found;
        }
        throw LookupError(Count() == 0 ? "no " + kind_ + " exists"
                                       : "no " + kind_ + " number " + std::to_string(position) + ": 1 to " +
                                             std::to_string(Count()) + " exist");
    }

    /// The position of the object of that name, counted from 1; 0 without one.
    [[nodiscard]] int PositionOf(std::string_view name) const {
        const auto found = places_.find(name);
        return found == places_.end() ? 0 : static_cast<int>(found->second) + 1;
    }

    [[nodiscard]] std::vector<std::string_view> Names() const {
        std::vector<std::string_view> names(items_.size());
        for (const auto& [name, place] : places_) {
            names[place] = name;
        }
        return names;
    }

    /// Adds at the end under a name. LookupError if the name is taken already.
    T& Add(std::string name, std::unique_ptr<T> item) {
        const auto [place, isNew] = places_.try_emplace(std::move(name), items_.size());
        if (!isNew) {
            throw LookupError("a " + kind_ + " called '" + place->first + "' exists already");
        }
        return Insert(Count() + 1, std::move(item));
    }

    /// Adds at the end without a name.
    T& Add(std::unique_ptr<T> item) { return Insert(Count() + 1, std::move(item)); }

    /// Adds before that position, counted from 1, without a name; only for a collection without names.
    T& Insert(int position, std::unique_ptr<T> item) {
        Owner owner(item.release(), [](T* object) { delete object; });
        return **items_.insert(items_.begin() + (position - 1), std::move(owner));
    }

    /// Removes the object at an existing position; only for a collection without names.
    void Remove(int position) { items_.erase(items_.begin() + (position - 1)); }

    void Clear() noexcept {
        places_.clear();
        items_.clear();
    }

    auto begin() { return Walker<T, typename std::vector<Owner>::iterator>(items_.begin()); }
    auto end() { return Walker<T, typename std::vector<Owner>::iterator>(items_.end()); }
    auto begin() const { return Walker<const T, typename std::vector<Owner>::const_iterator>(items_.begin()); }
    auto end() const { return Walker<const T, typename std::vector<Owner>::const_iterator>(items_.end()); }

private:
    std::string kind_;
    std::vector<Owner> items_;
    std::unordered_map<std::string, std::size_t, Hash, std::equal_to<>> places_;
};
