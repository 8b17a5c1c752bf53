// Times ngraph.forcelayout (3-D, Barnes-Hut, its default theta 0.8) on an
// edge list: node bench/ngraph_steps.js MODULES EDGES.json STEPS REPEAT
// prints the best milliseconds per step of REPEAT runs of STEPS steps.
const path = require("path");
const [modules, edgesFile, stepsText, repeatText] = process.argv.slice(2);
const load = (name) => require(path.join(path.resolve(modules), "node_modules", name));
const createGraph = load("ngraph.graph");
const createLayout = load("ngraph.forcelayout");
const { vertices, from, to } = JSON.parse(require("fs").readFileSync(edgesFile, "utf8"));

const graph = createGraph();
for (let v = 0; v < vertices; ++v) graph.addNode(v);
for (let e = 0; e < from.length; ++e) graph.addLink(from[e], to[e]);

const steps = Number(stepsText);
let best = Infinity;
for (let r = 0; r < Number(repeatText); ++r) {
  const layout = createLayout(graph, { dimensions: 3 });
  layout.step();  // warm-up: the first step builds its bodies
  const start = process.hrtime.bigint();
  for (let s = 0; s < steps; ++s) layout.step();
  const ms = Number(process.hrtime.bigint() - start) / 1e6 / steps;
  best = Math.min(best, ms);
}
console.log(best.toFixed(3));
