#include "app/controller_registry.h"

#include <map>
#include <mutex>

namespace app {
namespace {

struct Registry {
  std::mutex mutex;
  std::map<std::string, std::shared_ptr<VXLController>> byUuid;
  std::shared_ptr<VXLController> last;
};

// Made on first use and never destroyed, so lookups stay valid while other
// static objects are torn down at exit.
Registry& registry() {
  static Registry* const instance = new Registry;
  return *instance;
}

}  // namespace

void registerController(const std::string& uuid, std::shared_ptr<VXLController> controller) {
  Registry& r = registry();
  std::lock_guard lock(r.mutex);
  r.byUuid[uuid] = controller;
  r.last = std::move(controller);
}

void forgetController(const std::string& uuid) {
  Registry& r = registry();
  std::shared_ptr<VXLController> forgotten;  // released after the lock
  std::lock_guard lock(r.mutex);
  const auto found = r.byUuid.find(uuid);
  if (found == r.byUuid.end()) return;
  forgotten = std::move(found->second);
  r.byUuid.erase(found);
  if (r.last == forgotten) r.last.reset();
}

std::shared_ptr<VXLController> registeredController(const std::string& uuid) {
  Registry& r = registry();
  std::lock_guard lock(r.mutex);
  const auto found = r.byUuid.find(uuid);
  return found == r.byUuid.end() ? nullptr : found->second;
}

std::shared_ptr<VXLController> lastController() {
  Registry& r = registry();
  std::lock_guard lock(r.mutex);
  return r.last;
}

}  // namespace app
