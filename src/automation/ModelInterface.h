#pragma once

#include <tuple>
#include <utility>

#include "automation/Interface.h"
#include "automation/Wire.h"

/// The interface of a class. Each row is one call that names a member and what it does; the D-Bus types
/// follow from the types of the function.
template <class Object>
class ModelInterface : public Interface {
    template <class T>
    using Getter = std::conditional_t<std::is_same_v<T, std::string>, const std::string&, T> (Object::*)() const;
    template <class T>
    using Setter = void (Object::*)(T);

    /// What a function is like: its result and, without the object that comes first, its parameters.
    template <class Function>
    struct Shape : Shape<decltype(&Function::operator())> {};
    template <class Function, class Result, class... Parameters>
    struct Shape<Result (Function::*)(Object&, Parameters...) const> {
        using Returned = Result;
        using Kept = std::tuple<KeptType<Parameters>...>;
    };

public:
    using Interface::Interface;

    /// A property with both functions of its name.
    template <class T>
    void ReadWrite(const char* name, Getter<T> get, Setter<T> set) {
        Add<T>(
            name, [get](Object& object) -> T { return (object.*get)(); },
            [set](Object& object, const T& value) { (object.*set)(value); });
    }
    template <class T>
    PropertyRow& ReadOnly(const char* name, Getter<T> get) {
        return Add<T>(
            name, [get](Object& object) -> T { return (object.*get)(); }, nullptr);
    }
    template <class T>
    void WriteOnly(const char* name, Setter<T> set) {
        Add<T>(name, nullptr, [set](Object& object, const T& value) { (object.*set)(value); });
    }

    /// A property whose functions are of another form; null for none.
    template <class T, class Get, class Set>
    PropertyRow& Add(const char* name, Get get, Set set) {
        PropertyRow row{QString::fromLatin1(name), QString::fromLatin1(Wire<T>::kType), {}, {}};
        if constexpr (!std::is_null_pointer_v<Get>) {
            row.get = [get](void* object) { return Wire<T>::To(get(*static_cast<Object*>(object))); };
        }
        if constexpr (!std::is_null_pointer_v<Set>) {
            row.set = [set](void* object, const QVariant& v) { set(*static_cast<Object*>(object), Wire<T>::From(v)); };
        }
        return properties_.emplaceBack(std::move(row));
    }

    /// A method. `in` and `out` are the names of its arguments, parted by blanks.
    template <class Function>
    requires(!std::is_member_function_pointer_v<Function>) MethodRow& Method(const char* name, const char* in,
                                                                             const char* out, Function function) {
        using Kept = typename Shape<Function>::Kept;
        return AddRow<Kept, typename Shape<Function>::Returned>(
            name, in, out, [function](Object& object, const Kept& kept) {
                return std::apply([&](const auto&... values) { return function(object, values...); }, kept);
            });
    }
    template <class Result, class... Parameters>
    MethodRow& Method(const char* name, const char* in, const char* out, Result (Object::*function)(Parameters...)) {
        return AddRow<std::tuple<KeptType<Parameters>...>, Result>(name, in, out, Applying<Result>(function));
    }
    template <class Result, class... Parameters>
    MethodRow& Method(const char* name, const char* in, const char* out,
                      Result (Object::*function)(Parameters...) const) {
        return AddRow<std::tuple<KeptType<Parameters>...>, Result>(name, in, out, Applying<Result>(function));
    }

private:
    template <class Result, class Function>
    static auto Applying(Function function) {
        return [function](Object& object, const auto& kept) -> Result {
            return std::apply([&](const auto&... values) { return (object.*function)(values...); }, kept);
        };
    }

    template <class Kept, class Returned, class Run>
    MethodRow& AddRow(const char* name, const char* in, const char* out, Run run) {
        MethodRow row{QString::fromLatin1(name), InTypes<Kept>(in, Places<Kept>()), OutTypes<Returned>(out), {}};
        row.run = [run](void* object, const QVariantList& arguments) {
            const Kept kept = Taken<Kept>(arguments, Places<Kept>());
            if constexpr (std::is_void_v<Returned>) {
                run(*static_cast<Object*>(object), kept);
                return QVariantList();
            } else {
                return Results(run(*static_cast<Object*>(object), kept));
            }
        };
        return methods_.emplaceBack(std::move(row));
    }

    template <class Kept>
    using Places = std::make_index_sequence<std::tuple_size_v<Kept>>;

    template <class Kept, std::size_t... place>
    static Kept Taken([[maybe_unused]] const QVariantList& arguments, std::index_sequence<place...>) {
        return Kept{Wire<std::tuple_element_t<place, Kept>>::From(arguments[static_cast<qsizetype>(place)])...};
    }

    template <class T>
    static QVariantList Results(const T& result) {
        return {Wire<KeptType<T>>::To(result)};
    }
    template <class First, class Second>
    static QVariantList Results(const std::pair<First, Second>& result) {
        return {Wire<First>::To(result.first), Wire<Second>::To(result.second)};
    }

    static QList<Argument> Named(const char* names, const QStringList& types) {
        const QStringList list = QString::fromLatin1(names).split(' ', Qt::SkipEmptyParts);
        Q_ASSERT(list.size() == types.size());
        QList<Argument> arguments;
        for (qsizetype i = 0; i < types.size(); ++i) {
            arguments << Argument{list[i], types[i]};
        }
        return arguments;
    }
    template <class Kept, std::size_t... place>
    static QList<Argument> InTypes(const char* names, std::index_sequence<place...>) {
        return Named(names, {QString::fromLatin1(Wire<std::tuple_element_t<place, Kept>>::kType)...});
    }
    template <class Returned>
    static QList<Argument> OutTypes(const char* names) {
        return Named(names, Types(static_cast<std::type_identity<Returned>*>(nullptr)));
    }
    static QStringList Types(std::type_identity<void>*) { return {}; }
    template <class T>
    static QStringList Types(std::type_identity<T>*) {
        return {QString::fromLatin1(Wire<KeptType<T>>::kType)};
    }
    template <class First, class Second>
    static QStringList Types(std::type_identity<std::pair<First, Second>>*) {
        return {QString::fromLatin1(Wire<First>::kType), QString::fromLatin1(Wire<Second>::kType)};
    }
};
