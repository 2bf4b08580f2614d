#pragma once

namespace vantoro {

/// Processors that this process may run on; 1 at least. Found out once.
unsigned processorCount();

}
