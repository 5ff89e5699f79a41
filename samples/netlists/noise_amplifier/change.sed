s/rc=4.7k/rc=4.4k/
