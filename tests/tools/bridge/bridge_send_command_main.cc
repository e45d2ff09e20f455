// bridge_send_command <project> <command> <arguments-json> <timeout-seconds>
// Sends one command through the runtime control bridge and prints the response as compact JSON.
#include <iostream>
#include <string>

#include "tools/bridge/runtime_control_bridge.h"

int main(int argc, char** argv) {
  if (argc != 5) {
    std::cerr << "usage: bridge_send_command <project> <command> <arguments-json> <timeout>\n";
    return 2;
  }
  try {
    const zorvik::RuntimeToolResponse response = zorvik::RuntimeControlBridge().sendCommand(
        argv[1], argv[2], zorvik::AnyCodableValue::parse(argv[3]), std::nullopt,
        std::stod(argv[4]));
    std::cout << response.encode().compactJSONString().value_or("{}") << '\n';
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
