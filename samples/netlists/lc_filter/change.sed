s/800n 0 4n/800n 0 2n/
s/reltol=1e-3/reltol=1e-4/
