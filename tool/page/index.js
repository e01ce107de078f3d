document.documentElement.dataset.ready = String(Math.round(performance.now()));
