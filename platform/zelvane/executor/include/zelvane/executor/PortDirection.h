#pragma once

namespace ZelvaneGraph::Executor {

enum class PortDirection : int { Input = 0, Output = 1 };

} // namespace ZelvaneGraph::Executor
