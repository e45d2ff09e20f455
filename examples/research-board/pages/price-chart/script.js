const prices = { "North 2015": 3.9, "North 2024": 2.45, "South 2015": 3.7, "South 2024": 2.3 };
const chart = document.getElementById("chart");
for (const [label, price] of Object.entries(prices)) {
  const bar = document.createElement("div");
  bar.className = "bar";
  bar.style.width = `${price * 60}px`;
  bar.textContent = `${label}: ${price}`;
  chart.appendChild(bar);
}
