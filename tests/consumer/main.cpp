// A program of its own that uses only the installed, public interface of
// lytFilterParser: it parses, validates and converts a request.
#include <lytFilterParser/lytFilterParser.h>

#include <iostream>
#include <memory>
#include <string>

namespace {

int failures = 0;

void expectEqual(const std::string& what, const std::string& got, const std::string& expected) {
  std::cout << what << ": [" << got << "]\n";
  if (got != expected) {
    std::cerr << what << ": expected [" << expected << "]\n";
    ++failures;
  }
}

}  // namespace

int main() {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest("-f src 10.0.0.1 -k svc -v conn", error));
  if (!request) {
    std::cerr << "parse failed: " << error << "\n";
    return 1;
  }
  expectEqual("dump", request->dump(), "-f src  10.0.0.1    -k svc acc=replace -v conn acc=rate ");

  NetworkKovaRequest& network = dynamic_cast<NetworkKovaRequest&>(*request);
  std::string message;
  expectEqual("isValid(3)", network.isValid(message) ? "valid" : message, "valid");
  // Validation completes the request: a connection count read as a rate is
  // a count of concurrent connections, and a dynamic view sorts by top.
  expectEqual("completed", request->dump(), "-f src  10.0.0.1    -k svc acc=replace -v conn acc=concurrent -s top ");
  expectEqual("minimal peer", std::to_string(network.getMinimalValidVersion(message)), "1");
  expectEqual("legacy", request->dump(TavVersion(1)), "-filter [ and [[src 0 [10.0.0.1 ]]]] -a a -y C -g topsvc ");

  std::string convertError;
  expectEqual("convert", LYTKovaRequest::convert("-g topsrc -y c src 1 [ 10.0.0.1 ]", convertError),
              "-f src not 10.0.0.1    -k src acc=replace -v conn acc=new -s top ");
  expectEqual("convert error", convertError, "");

  return failures == 0 ? 0 : 1;
}
