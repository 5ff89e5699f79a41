s/load=1k/load=1.05k/
s/3m 0 10u/3m 0 5u/
