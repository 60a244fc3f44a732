#include "binding.h"

PYBIND11_MODULE(_lytfilterparser, module) {
  // Every docstring below starts with its own typed signature line.
  pybind11::options options;
  options.disable_function_signatures();
  module.doc() = "The lytFilterParser library; use it through the package lytfilterparser.";
  lfp_python::translateLibraryMessages();
  lfp_python::bindModel(module);
  lfp_python::bindRequests(module);
  lfp_python::bindVocabulary(module);
  lfp_python::bindDiagnostics(module);
}
