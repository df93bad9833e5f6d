#pragma once

#include <stdexcept>
#include <string>

/// What is wrong with the user's file, value or name, in words that the user can act on. Faults of the program
/// itself are assertions and never of this family.
class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A name or a position that a collection doesn't hold.
class LookupError : public UserError {
public:
    using UserError::UserError;
};

/// A text that is no number, or a number that doesn't fit where it should go.
class ConversionError : public UserError {
public:
    using UserError::UserError;
};

/// A value that a property refuses because nothing sensible could follow from it.
class RefusedError : public UserError {
public:
    using UserError::UserError;
};

/// Runs an operation that is told to go on whatever fails inside it. True if nothing did.
template <class Operation>
bool IgnoringFailures(Operation&& operation) {
    try {
        operation();
        return true;
    } catch (const UserError&) {
        return false;
    }
}
