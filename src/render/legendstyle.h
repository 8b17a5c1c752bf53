#pragma once
// How a legend labels itself: by the rows its colouring gave it (no title),
// or with its title and readable round ticks.
enum class LegendStyle { Rows, Readable };
