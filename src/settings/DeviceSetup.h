#pragma once

#include <string>

class cPart;

/// Builds a device that has nothing yet from the part file at that path, and checks it. Whatever is wrong with the
/// file ends up in the device's FileProblems, in the order of the lines; reading never fails.
void ReadPartFile(cPart& part, const std::string& path);

/// Selects a device: takes the old one away and builds the new one from its part file. `partName` is the name as it
/// stands in the menu; on return it holds the path of the part file. `hasFamily` shows the burst controls: a device
/// from the plain menu and one selected by another program go without. Nothing goes to the port. Whatever is wrong
/// with the file ends up in the device's FileProblems; selecting never fails.
void SetupPartForm(cPart& part, const std::string& appPath, std::string& partName, bool hasFamily);
