#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Brings the shipped part files and tarnwick.ini into the user's folder, and later their new versions, but never over
/// a file that the user changed: its new version is put beside it, with ".new" behind the name. A file that the user
/// removed stays away, unless tarnwick.ini is missing too: then all that is missing comes back. The items of the recent
/// list, which the program itself writes, are no change of the user's and outlast an update.
class ShippedFiles {
public:
    /// Both without a separator at the end.
    ShippedFiles(std::string folder, std::string shipped);

    /// Returns what the user should know: what failed, or which files have a new version beside them; or nothing.
    std::string Update();

private:
    using Hashes = std::map<std::string, std::string>;

    std::string List(std::vector<std::string>& names) const;
    std::string Recall();
    std::string BringAll();
    std::string Bring(const std::string& name);
    std::string BringOver(const std::string& name, std::string_view shipped, std::string_view own);
    std::string Remember(const Hashes& before) const;
    [[nodiscard]] std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }

    std::string folder_;
    std::string shipped_;
    bool refill_ = false;                ///< The folder has no tarnwick.ini: it is filled for the first time, or anew.
    Hashes remembered_;                  ///< Of what was shipped last, by name.
    std::vector<std::string> changed_;   ///< The user's files that a new version was put beside.
};
