#pragma once
// The process-wide registry of controllers: every controller is entered under
// its UUID when it is made and stays there, so a script can still reach the
// controller of a closed window; only a controller made for one piece of
// work (a picture drawn from a script) is forgotten again. The registry
// holds the controllers alive.
#include <memory>
#include <string>

class VXLController;

namespace app {

// Enters `controller` under `uuid` and records it as the last one made.
void registerController(const std::string& uuid, std::shared_ptr<VXLController> controller);
// Removes the controller registered under `uuid`, so it lives only as long as
// its other owners; when it was the last one made, there is none.
void forgetController(const std::string& uuid);
// The controller registered under `uuid`, or null.
std::shared_ptr<VXLController> registeredController(const std::string& uuid);
// The controller registered last, or null before the first.
std::shared_ptr<VXLController> lastController();

}  // namespace app
