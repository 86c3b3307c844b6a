var x = ;
