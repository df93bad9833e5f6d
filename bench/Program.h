#pragma once

#include <memory>

#include "Child.h"
#include "support/TempFolder.h"

/// The real program in a folder of its own, beside copies of the shipped part files, with the port log on.
class Program {
public:
    Program();

    /// Puts a part file beside the others.
    void AddPart(const std::string& name, const std::string& contents) const;

    /// Starts it. What it writes goes nowhere.
    void Start(const QProcessEnvironment& environment);

    [[nodiscard]] Child& Process() const { return *process_; }

private:
    TempFolder folder_;
    std::unique_ptr<Child> process_;
};
